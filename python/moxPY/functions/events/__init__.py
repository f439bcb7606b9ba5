"""Events: reading, adding, describing and removing them."""

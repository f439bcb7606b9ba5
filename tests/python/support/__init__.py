"""Files for tests, made byte by byte without the code that is tested."""

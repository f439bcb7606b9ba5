"""The functions of the extension module `_moxPY`, with documentation and types, by family."""

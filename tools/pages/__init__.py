"""The site of the documents: which pages there are, and what is made for it alone.

The pages of `docs/` and some beside it are read on their own, too, with links from file to file.
For the site they are copied into one folder, where the links lead to the copies; the reference and
the pages that list others are written there. Sphinx makes the site of that folder.

===============  =================================================================
contents         the chapters and their pages
links            where links of a file lead when it lies among the pages
staging          the folder that the site is made of
function_pages   the reference of the functions, from the face and its prototypes
object_pages     the reference of `Trial` and all that belongs to it
layers           the drawing of the layers, from the includes that are allowed
built            whether links of the site lead anywhere, and nothing leads out of it
===============  =================================================================
"""

"""API pages of the Python package, of what is installed."""

project = "kvr"
author = "the kvr authors"
extensions = ["sphinx.ext.autodoc", "sphinx.ext.napoleon"]
autodoc_member_order = "bysource"
autodoc_typehints = "description"
html_theme = "alabaster"

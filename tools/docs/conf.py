"""Sphinx's settings: one site that works from files, without a network."""

project = "Tarvelon"
html_title = "Tarvelon"
extensions = ["myst_parser"]
root_doc = "index"
nitpicky = True
myst_heading_anchors = 3

html_theme = "furo"
html_static_path = ["_static"]
html_css_files = ["site.css"]
html_show_copyright = False
html_show_sphinx = False
html_copy_source = False
html_show_sourcelink = False
# A page that is opened as a file may not read other files, so the search cannot show text around its results.
html_show_search_summary = False
html_use_index = False
toc_object_entries_show_parents = "hide"
add_module_names = False
python_use_unqualified_type_names = True

"""Settings of the site. README.md here says how it is built; CMakeLists.txt gives what is built of what."""
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

project = "Zorbet"
author = "The Zorbet developers"
html_title = "Zorbet"
language = "en"
root_doc = "index"
source_suffix = {".md": "markdown"}
extensions = ["myst_parser", "sitepages", "siteexamples", "sitereference", "sitelexers"]

# Links within a page are those of code hosts: the heading in small letters, blanks as hyphens.
myst_heading_anchors = 4

html_theme = "furo"
html_static_path = [str(HERE / "static")]
html_css_files = ["site.css"]
html_show_copyright = False
html_show_sourcelink = False
html_copy_source = False
html_use_index = False
html_domain_indices = False
html_theme_options = {
    "light_css_variables": {
        "color-brand-primary": "#0b5a7d",
        "color-brand-content": "#0b5a7d",
        "color-admonition-background": "#eef5f8",
        "font-stack--monospace": "'DejaVu Sans Mono', Menlo, Consolas, monospace",
    },
    "dark_css_variables": {
        "color-brand-primary": "#7cc7e8",
        "color-brand-content": "#7cc7e8",
    },
}
pygments_style = "tango"
pygments_dark_style = "monokai"

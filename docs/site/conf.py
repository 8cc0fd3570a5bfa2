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

smartquotes = False  # "--" is an option's

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
    # Some builds of the theme have these only for who chose the dark one by hand, not by the system's settings.
    "dark_css_variables": {
        "color-problematic": "#ee5151",
        "color-foreground-primary": "#ffffffcc",
        "color-foreground-secondary": "#9ca0a5",
        "color-foreground-muted": "#81868d",
        "color-foreground-border": "#666666",
        "color-background-primary": "#131416",
        "color-background-secondary": "#1a1c1e",
        "color-background-hover": "#1e2124ff",
        "color-background-hover--transparent": "#1e212400",
        "color-background-border": "#303335",
        "color-background-item": "#444",
        "color-announcement-background": "#000000dd",
        "color-announcement-text": "#eeebee",
        "color-brand-primary": "#7cc7e8",
        "color-brand-content": "#7cc7e8",
        "color-highlighted-background": "#083563",
        "color-guilabel-background": "#08356380",
        "color-guilabel-border": "#13395f80",
        "color-api-keyword": "var(--color-foreground-secondary)",
        "color-highlight-on-target": "#333300",
        "color-admonition-background": "#18181a",
        "color-card-border": "var(--color-background-secondary)",
        "color-card-background": "#18181a",
        "color-card-marginals-background": "var(--color-background-hover)",
    },
}
pygments_style = "default"
pygments_dark_style = "monokai"

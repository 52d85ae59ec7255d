"""What the makers of reference pages share: Markdown texts, and writing a page."""

import re
import textwrap
from pathlib import Path

WIDTH = 120


def escaped(text: str) -> str:
    """Returns a text in which Markdown finds no markup."""
    return re.sub(r"([\\*<\[\]|])", r"\\\1", text)


def paragraph(text: str) -> str:
    """Returns a text wrapped into lines. A line never begins with what Markdown takes for a list."""
    lines = textwrap.wrap(" ".join(text.split()), WIDTH, break_long_words=False, break_on_hyphens=False)
    return "\n".join(re.sub(r"^(\d+\.|[-+#])(\s)", r"\\\1\2", line) for line in lines)


def first_sentence(text: str) -> str:
    """Returns the first sentence of a text, without its period."""
    return re.split(r"(?<=[a-z0-9`)])\.(?:\s|$)", text.strip(), maxsplit=1)[0].rstrip(".:")


def table(headings: list[str], rows: list[list[str]]) -> str:
    """Returns a table; its cells are Markdown."""
    lines = [headings, ["---"] * len(headings), *rows]
    return "\n".join("| " + " | ".join(" ".join(cell.split()) for cell in line) + " |" for line in lines)


def write_page(folder: Path, name: str, source: str, parts: list[str]) -> None:
    """Writes the parts, separated by blank lines, with a first line that names the page's source."""
    mark = f"<!-- Made by script/docs from {source}: change that, then run script/docs. -->"
    (folder / name).write_text("\n\n".join([mark, *parts]) + "\n", encoding="utf-8")

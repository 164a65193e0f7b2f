"""The reference of docs/python.md from the docstrings."""

from __future__ import annotations

import inspect
import re
from collections.abc import Iterator
from typing import Any

import keltrix as kx

# Subjects in the order in which people meet them.
ORDER = [
    ("Beams and members", ["Beam", "Member"]),
    ("Checks", ["check_text", "check_file", "check_many", "columns", "member_of_row", "validate", "report"]),
    ("Tables of other programs", ["from_table", "from_pynite", "read_saf", "write_saf", "Imported"]),
    ("Many machines", ["dask"]),
    ("Results", ["Result", "Results", "Finding", "Step", "Resistance", "Diagnostic", "InputError"]),
    ("Studies", ["design", "Design", "Candidate", "capacity", "buckling", "Buckling"]),
    ("Sections and design codes", ["sections", "Sections", "Section", "SectionValue", "codes", "Code", "Option", "Term"]),
]


def members_of(cls: type) -> Iterator[tuple[str, Any]]:
    """Public methods and properties of a class, in the order of their definition, those that it shares with another class first."""
    shared = [base for base in cls.__mro__[1:] if base.__module__.startswith("keltrix.")]
    for name, member in [one for owner in (*shared, cls) for one in vars(owner).items()]:
        is_own = isinstance(member, (property, classmethod)) or inspect.isfunction(member) or hasattr(member, "func")
        if not name.startswith("_") and is_own:
            yield name, member


def function_of(member: Any) -> Any:
    return member.__func__ if isinstance(member, classmethod) else member


def doc_of(member: Any) -> str:
    doc = inspect.getdoc(member.fget if isinstance(member, property) else function_of(member))
    return doc or ""


def signature_of(name: str, function: Any) -> str:
    """Names and defaults; types stand in the stubs and in the text."""
    try:
        parameters = inspect.signature(function).parameters.values()
    except (TypeError, ValueError):
        return name
    parts = []
    has_star = False
    for parameter in parameters:
        if parameter.name in ("self", "cls"):
            continue
        if parameter.kind is parameter.KEYWORD_ONLY and not has_star:
            parts.append("*")
            has_star = True
        if parameter.kind is parameter.VAR_KEYWORD:
            parts.append(f"**{parameter.name}")
        elif parameter.default is parameter.empty:
            parts.append(parameter.name)
        else:
            parts.append(f"{parameter.name}={parameter.default!r}")
    return f"{name}({', '.join(parts)})"


def markdown_of(doc: str) -> str:
    """A docstring of NumPy's style: its sections become headings in bold, their entries lists."""
    parts = re.split(r"^(\w[\w ]*)\n-{3,}$", doc, flags=re.MULTILINE)
    text = parts[0].strip() + "\n"
    for title, body in zip(parts[1::2], parts[2::2]):
        if title == "Examples":
            text += "\n" + examples_of(body)
            continue
        text += f"\n**{title}**\n\n"
        entries = re.split(r"^(?=\S)", body.strip("\n"), flags=re.MULTILINE)
        for entry in filter(None, entries):
            head, _, rest = entry.partition("\n")
            meaning = " ".join(line.strip() for line in rest.splitlines()).strip()
            text += f"- `{head.strip()}`" + (f": {meaning}" if meaning else "") + "\n"
    return text


def examples_of(body: str) -> str:
    """Examples in fences, the words between them outside."""
    text = ""
    for block in re.split(r"\n\n+", body.strip("\n")):
        text += f"```python\n{block.strip()}\n```\n\n" if block.lstrip().startswith(">>>") else block.strip() + "\n\n"
    return text.rstrip("\n") + "\n"


def entry_of(name: str) -> str:
    what = getattr(kx, name)
    if name == "sections":
        return "#### `sections`\n\nThe catalogue of this process, of the class `Sections`.\n"
    if inspect.ismodule(what):
        text = f"#### `{name}`\n\n{markdown_of(inspect.getdoc(what) or '')}"
        for one in what.__all__:
            function = getattr(what, one)
            text += f"\n##### `{signature_of(f'{name}.{one}', function)}`\n\n{markdown_of(doc_of(function))}"
        return text
    is_class = inspect.isclass(what)
    head = signature_of(name, what) if not is_class or name in ("Beam", "Member") else name
    text = f"#### `{head}`\n\n{markdown_of(inspect.getdoc(what) or '')}"
    if not is_class:
        return text
    for member_name, member in members_of(what):
        is_call = inspect.isfunction(function_of(member))
        title = signature_of(member_name, function_of(member)) if is_call else member_name
        text += f"\n##### `{name}.{title}`\n\n{markdown_of(doc_of(member))}"
    return text


def page() -> str:
    """The reference as Markdown."""
    return "\n".join(
        f"### {title}\n\n" + "\n".join(entry_of(name) for name in names) for title, names in ORDER
    ).rstrip("\n") + "\n"

"""The catalogue of sections."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import dataclass
from typing import Any, Iterator

import numpy as np
import numpy.typing as npt

from . import _keltrix
from ._errors import InputError

__all__ = ["Section", "SectionValue", "Sections", "sections"]


@dataclass(frozen=True)
class SectionValue:
    """A dimension or property of a section.

    Attributes
    ----------
    symbol : str
    value : float
        In SI: m, m², m³, m⁴, m⁶, radians.
    unit : str
        The unit in which engineers read it.
    factor : float
        From SI to that unit.
    meaning : str
    """

    symbol: str
    value: float
    unit: str
    factor: float
    meaning: str


class Section:
    """A section of the catalogue or of a parametric description.

    Every property is an attribute by its symbol, in SI, and so is every dimension whose symbol no property has:
    ``section.Ixx`` in m⁴, ``section.D`` in m.

    Attributes
    ----------
    name : str
    family : str or None
        None of a parametric description.
    shape, type : str
    mass_per_metre : float
        kg/m.
    dimensions, properties : dict of str to SectionValue
        By symbol.

    Examples
    --------
    >>> import keltrix as kx
    >>> section = kx.sections["UB 457x191x67"]
    >>> round(section.Ixx * 1e8)
    29380
    >>> section.properties["Ixx"].unit
    'cm⁴'
    """

    name: str
    family: str | None
    shape: str
    type: str
    mass_per_metre: float
    dimensions: dict[str, SectionValue]
    properties: dict[str, SectionValue]

    def __init__(self, name: str) -> None:
        record = _keltrix.section(name)
        self.name = record["name"]
        self.family = record["family"]
        self.shape = record["shape"]
        self.type = record["type"]
        self.mass_per_metre = record["mass_per_metre"]
        self.dimensions = {value[0]: SectionValue(*value) for value in record["dimensions"]}
        self.properties = {value[0]: SectionValue(*value) for value in record["properties"]}

    def __getattr__(self, symbol: str) -> float:
        if symbol.startswith("_") or "properties" not in self.__dict__:
            raise AttributeError(symbol)
        value = self.properties.get(symbol) or self.dimensions.get(symbol)
        if value is None:
            known = ", ".join([*self.properties, *self.dimensions])
            raise AttributeError(f"{self.name} has no {symbol}; it has {known}")
        return value.value

    def __dir__(self) -> list[str]:
        return [*super().__dir__(), *self.properties, *self.dimensions]

    def __reduce__(self) -> tuple[Any, ...]:
        return Section, (self.name,)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Section) and other.name == self.name and other.type == self.type

    def __hash__(self) -> int:
        return hash(self.name)

    def _repr_svg_(self) -> str:
        return _keltrix.section_svg(self.name)

    def __repr__(self) -> str:
        return f"<Section {self.name}: {self.shape}, {self.mass_per_metre:g} kg/m>"


class Sections(Mapping[str, Section]):
    """The catalogue: designations to sections. Parametric descriptions are found as well, but are not counted.

    Examples
    --------
    >>> import keltrix as kx
    >>> len(kx.sections) > 1400, "UB 457x191x67" in kx.sections
    (True, True)
    >>> kx.sections["I 450x190x9x14"].family is None
    True
    """

    def __getitem__(self, name: str) -> Section:
        return Section(name)

    def __iter__(self) -> Iterator[str]:
        return iter(_keltrix.designations(""))

    def __len__(self) -> int:
        return len(_keltrix.designations(""))

    def __contains__(self, name: object) -> bool:
        if not isinstance(name, str):
            return False
        try:
            _keltrix.section(name)
        except InputError:
            return False
        return True

    @property
    def families(self) -> tuple[str, ...]:
        """The families of the catalogue, in its order."""
        return tuple(_keltrix.families())

    def of(self, family: str) -> tuple[str, ...]:
        """The designations of a family.

        Parameters
        ----------
        family : str
            Letter case does not matter.

        Raises
        ------
        InputError
            For a family that there is not, with those that there are.
        """
        if not family:
            raise InputError(f"family: got nothing, expected one of {', '.join(self.families)}")
        return tuple(_keltrix.designations(family))

    def table(self, family: str) -> npt.NDArray[np.void]:
        """Dimensions and properties of all sections of a family, in SI.

        Parameters
        ----------
        family : str
            Letter case does not matter.

        Returns
        -------
        numpy.ndarray
            A structured array with the field "name", the field "mass_per_metre" in kg/m and one field for each
            symbol of `Section`. A dimension whose symbol a property has, as the leg A of angles has that of the
            area, is called "A_dimension". What a section does not have is not-a-number.

        Raises
        ------
        InputError
            For a family that there is not, with those that there are.

        Examples
        --------
        >>> import keltrix as kx
        >>> table = kx.sections.table("UB")
        >>> shallow = table[table["D"] <= 0.2]
        >>> str(shallow["name"][shallow["Ixx"].argmax()])
        'UB 178x102x19'
        """
        names, symbols, numbers = _keltrix.section_table(family)
        width = max(map(len, names), default=1)
        table = np.zeros(len(names), dtype=[("name", f"U{width}"), *((s, "f8") for s in symbols)])
        table["name"] = names
        for i, symbol in enumerate(symbols):
            table[symbol] = numbers[:, i]
        return table

    def __repr__(self) -> str:
        return f"<Sections: {len(self)} of {', '.join(self.families)}>"


sections = Sections()
"""The catalogue of this process."""

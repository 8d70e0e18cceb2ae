"""Shapely's geometries as well-known binary and back: in one call where shapely has such (since
2.0), else one by one."""

from __future__ import annotations

from importlib import import_module
from typing import Any, Iterable, Optional


def _shapely() -> Any:
    try:
        for part in ("shapely.wkb", "shapely.wkt"):
            import_module(part)
        return import_module("shapely")
    except ImportError as error:
        raise ImportError("this needs shapely, which is not installed") from error


def to_wkb(geometries: Any) -> Any:
    """A record for each; None for None."""
    shapely = _shapely()
    if hasattr(shapely, "to_wkb"):
        return shapely.to_wkb(geometries, output_dimension=2)
    return [None if one is None else one.wkb for one in geometries]


def from_wkb(records: list[bytes]) -> Any:
    shapely = _shapely()
    if hasattr(shapely, "from_wkb"):
        return shapely.from_wkb(records)
    return [shapely.wkb.loads(record) for record in records]


def from_wkt(texts: Iterable[Optional[str]]) -> list[Any]:
    loads = _shapely().wkt.loads
    return [None if text is None else loads(text) for text in texts]

"""Shapely's geometries as well-known binary and back: in one call where shapely has such (since
2.0), else one by one."""

from __future__ import annotations

from typing import Any, Iterable, Optional, Sequence


def _shapely() -> Any:
    try:
        import shapely
        import shapely.wkb
        import shapely.wkt
    except ImportError as error:
        raise ImportError("this needs shapely, which is not installed") from error
    return shapely


def to_wkb(geometries: Any) -> Iterable[Any]:
    """A record for each; None for None."""
    shapely = _shapely()
    if hasattr(shapely, "to_wkb"):
        return shapely.to_wkb(geometries, output_dimension=2)
    return [None if one is None else one.wkb for one in geometries]


def from_wkb(records: list[bytes]) -> Sequence[Any]:
    shapely = _shapely()
    if hasattr(shapely, "from_wkb"):
        return shapely.from_wkb(records)
    return [shapely.wkb.loads(record) for record in records]


def from_wkt(texts: Iterable[Optional[str]]) -> list[Any]:
    loads = _shapely().wkt.loads
    return [None if text is None else loads(text) for text in texts]

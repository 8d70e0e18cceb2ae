"""GeoJSON objects, and what speaks their language by a ``__geo_interface__``."""

from __future__ import annotations

import json
from itertools import chain
from numbers import Real
from typing import Any, Mapping, NamedTuple, Sequence

_WITHOUT_AREA = ("Point", "MultiPoint", "LineString", "MultiLineString")


class Polygons(NamedTuple):
    """What a GeoJSON object holds."""

    polygons: list[tuple[str, list[Any]]]  #: where each stands, and its rings, lists of pairs
    left_out: dict[str, list[int]]  #: geometries that bound no region, with their features


def polygons_of(source: Any) -> Polygons:
    """Raises ValueError for what is no GeoJSON, with its place."""
    if isinstance(source, (str, bytes, bytearray)):
        source = json.loads(source)
    found, source = Polygons([], {}), _object(source)
    is_collection = source["type"] == "FeatureCollection"
    for i, part in enumerate(_list(source, "features", "") if is_collection else [source]):
        part = _object(part, f"feature {i}: ")
        if part["type"] == "Feature":
            part = part.get("geometry")
        if part is not None:
            _add(part, i, 0, found)
    return found


def _add(source: Any, feature: int, polygon: int, found: Polygons) -> int:
    """Adds what a geometry holds. Returns the number of the feature's next polygon."""
    place = f"feature {feature}"
    geometry = _object(source, f"{place}: ")
    kind = geometry["type"]
    if kind in _WITHOUT_AREA:
        found.left_out.setdefault(kind, []).append(feature)
    elif kind == "GeometryCollection":
        for part in _list(geometry, "geometries", f"{place}: "):
            polygon = _add(part, feature, polygon, found)
    elif kind in ("Polygon", "MultiPolygon"):
        if kind == "Polygon":
            parts = [geometry.get("coordinates")]
        else:
            parts = _list(geometry, "coordinates", f"{place}: ")
        for part in parts:
            where = f"{place}, polygon {polygon}"
            rings = _checked(part, f"{where}: the coordinates")
            found.polygons.append(
                (where, [_in_the_plane(ring, f"{where}, ring {i}") for i, ring in enumerate(rings)]))
            polygon += 1
    else:
        raise ValueError(f"{place}: {kind!r} is no geometry of GeoJSON")
    return polygon


def _object(source: Any, place: str = "") -> Mapping[str, Any]:
    if not isinstance(source, Mapping):
        source = getattr(source, "__geo_interface__", source)
    if not isinstance(source, Mapping) or "type" not in source:
        raise ValueError(f"{place}this is no GeoJSON object: {source!r:.60}")
    return source


def _list(source: Mapping[str, Any], name: str, place: str) -> Sequence[Any]:
    return _checked(source.get(name), f"{place}the {name}")


def _checked(value: Any, name: str) -> Sequence[Any]:
    if not isinstance(value, (list, tuple)):
        raise ValueError(f"{name} must be a list, not {value!r:.60}")
    return value


def _in_the_plane(ring: Any, place: str) -> Sequence[Sequence[float]]:
    """A ring without heights; all at once, where nothing is out of the ordinary."""
    _checked(ring, place)
    try:
        lengths = set(map(len, ring))
        if set(map(type, chain.from_iterable(ring))) <= {int, float} and min(lengths, default=2) >= 2:
            return ring if lengths <= {2} else [position[:2] for position in ring]
    except TypeError:
        pass
    for i, position in enumerate(ring):
        _check_position(position, f"{place}, point {i}")
    return [position[:2] for position in ring]


def _check_position(position: Any, place: str) -> None:
    pair = position[:2] if isinstance(position, (list, tuple)) else ()
    if len(pair) < 2 or not all(isinstance(n, Real) and not isinstance(n, bool) for n in pair):
        raise ValueError(f"{place}: {position!r:.60} is no pair of numbers")


def to_geometry(polygons: list[list[list[Any]]]) -> dict[str, Any]:
    """A geometry of polygons that are lists of rings, which are closed here."""
    parts = tuple(
        tuple(tuple(map(tuple, ring + ring[:1])) for ring in rings) for rings in polygons)
    if len(parts) == 1:
        return {"type": "Polygon", "coordinates": parts[0]}
    return {"type": "MultiPolygon", "coordinates": parts}

"""GeoJSON objects, and what speaks their language by a ``__geo_interface__``."""

from __future__ import annotations

import json
from typing import Any, Iterator, Mapping, Sequence

_CONTAINERS = {"FeatureCollection": "features", "GeometryCollection": "geometries"}


def polygons_of(source: Any) -> Iterator[list[Any]]:
    """The rings of each polygon, as lists of pairs. Raises ValueError for what has none."""
    if isinstance(source, (str, bytes, bytearray)):
        source = json.loads(source)
    if not isinstance(source, Mapping):
        source = getattr(source, "__geo_interface__", source)
    if not isinstance(source, Mapping) or "type" not in source:
        raise ValueError(f"this is no GeoJSON object: {source!r:.60}")
    kind = source["type"]
    try:
        if kind == "Feature":
            if source["geometry"] is not None:
                yield from polygons_of(source["geometry"])
        elif kind in _CONTAINERS:
            for part in source[_CONTAINERS[kind]]:
                yield from polygons_of(part)
        elif kind in ("Polygon", "MultiPolygon"):
            coordinates = source["coordinates"]
            for rings in coordinates if kind == "MultiPolygon" else [coordinates]:
                yield [_in_the_plane(ring) for ring in rings]
        else:
            raise ValueError(f"a {kind} bounds no region")
    except KeyError as error:
        raise ValueError(f"a {kind} without {error}") from None


def _in_the_plane(ring: Sequence[Sequence[float]]) -> Sequence[Sequence[float]]:
    return [position[:2] for position in ring] if any(len(p) > 2 for p in ring) else ring


def to_geometry(polygons: list[list[list[Any]]]) -> dict[str, Any]:
    """A geometry of polygons that are lists of rings, which are closed here."""
    parts = tuple(
        tuple(tuple(map(tuple, ring + ring[:1])) for ring in rings) for rings in polygons)
    if len(parts) == 1:
        return {"type": "Polygon", "coordinates": parts[0]}
    return {"type": "MultiPolygon", "coordinates": parts}

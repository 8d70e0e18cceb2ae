"""Exact polygon Booleans and triangulation.

>>> from zelvan import Region
>>> house = Region([[(0, 0), (10, 0), (10, 6), (5, 9), (0, 6)]])
>>> window = Region([[(3, 2), (7, 2), (7, 5), (3, 5)]])
>>> wall = house - window
>>> wall.area, wall.bounds
(63.0, (0.0, 0.0, 10.0, 9.0))
>>> vertices, triangles, neighbours = wall.triangulate()
>>> len(vertices), len(triangles)
(9, 9)

Nothing but the standard library is needed; arrays are numpy's where it is there, else
memoryviews. Regions speak with shapely and geopandas by ``__geo_interface__`` and
``Region.from_geojson``; many at once, which needs numpy, are a ``RegionArray``. The shared library is the installed one, or that of the
environment's ``ZELVAN_LIBRARY``.
"""

from ._arrays import Array, Points
from ._grid import FillRule, Grid, Operation
from ._library import TooCoarseError
from ._overlay import CoverageFault, FaultKind, Part, check_coverage, dissolve, overlay
from ._region import (
    Distance, LossWarning, Mesh, Nearest, Polygon, Region, combine, common_grid, triangulate_rings,
    unite, unite_rings)

__version__ = "1.0.0"  # the library's, which CMake holds it to

__all__ = [
    "Array", "CoverageFault", "Distance", "FaultKind", "FillRule", "Grid", "LossWarning", "Mesh",
    "Nearest", "Operation", "Part", "Points", "Polygon", "Region", "TooCoarseError",
    "check_coverage", "combine", "common_grid", "dissolve", "overlay", "triangulate_rings", "unite",
    "unite_rings"]

try:
    from ._region_array import Buffers, RegionArray
    __all__ += ["Buffers", "RegionArray"]
except ModuleNotFoundError as error:  # arrays of regions need numpy, the rest does not
    if error.name != "numpy":
        raise

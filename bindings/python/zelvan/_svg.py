"""Regions as pictures, for notebooks."""

from __future__ import annotations

from typing import Any, Iterable, Optional, Sequence

_PIXELS = 300.0


def picture(rings: Iterable[Sequence[Any]], bounds: Optional[Sequence[float]]) -> str:
    """An SVG of rings, which count by the even-odd rule, y upward; empty without a box."""
    if bounds is None:
        return '<svg xmlns="http://www.w3.org/2000/svg" width="1" height="1"/>'
    left, bottom, right, top = bounds
    scale = _PIXELS / max(right - left, top - bottom)
    width, height = (right - left) * scale, (top - bottom) * scale

    def place(point: Any) -> str:
        return f"{(point[0] - left) * scale:.2f} {(top - point[1]) * scale:.2f}"

    path = "".join(f"M{'L'.join(map(place, ring))}Z" for ring in rings)
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:.0f}" height="{height:.0f}" '
            f'viewBox="-1 -1 {width + 2:.2f} {height + 2:.2f}"><path d="{path}" fill="#8fb8a8" '
            'fill-rule="evenodd" stroke="#33554a" stroke-linejoin="round"/></svg>')

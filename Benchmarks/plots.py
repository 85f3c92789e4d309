"""Plots as SVG, both on logarithmic scales."""
import math
from xml.sax.saxutils import escape

colours = ["#0b6e4f", "#b9451b", "#34558b", "#8a6d1d", "#6b3f87", "#5a5a5a"]


def text(x, y, content, anchor="start", size=12, colour="#222"):
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" fill="{colour}">'
            f"{escape(content)}</text>")


def document(width, height, parts):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
            f'viewBox="0 0 {width} {height}" font-family="DejaVu Sans, Helvetica, Arial, sans-serif">\n'
            f'<rect width="{width}" height="{height}" fill="#fff"/>\n' + "\n".join(parts) + "\n</svg>\n")


def bars(works):
    """Each peer's time as a multiple of our own: a bar from the line of our own, to the right where it is slower."""
    row, left, width = 17, 370, 940
    ratios = [time / next(iter(times.values())) for _, times in works for time in times.values()]
    least, most = min(0.5, *ratios), max(ratios)
    scale = (width - left - 60) / math.log10(most / least)

    def place(ratio):
        return left + math.log10(ratio / least) * scale

    bottom = 62 + sum(row * len(times) + 7 for _, times in works)
    parts, y = [text(10, 22, "Time taken, in multiples of this project's own: right of the line slower, left of it faster",
                     size=15)], 58
    for ratio in (0.5, 1, 2, 5, 10, 20, 50, 100):
        if ratio <= most:
            parts.append(f'<line x1="{place(ratio):.1f}" y1="52" x2="{place(ratio):.1f}" y2="{bottom}" stroke="#ddd"/>')
            parts.append(text(place(ratio), 46, f"{ratio:g}", "middle", 10))
    for title, times in works:
        own = next(iter(times.values()))
        for index, (name, time) in enumerate(times.items()):
            begin, end = sorted((place(1), place(time / own)))
            if index == 0:
                parts.append(text(10, y + 12, title, size=11))
                begin, end = begin - 3, end + 3
            parts.append(text(left - 12, y + 12, name, "end", 11))
            parts.append(f'<rect x="{begin:.1f}" y="{y + 2}" width="{max(1, end - begin):.1f}" height="{row - 5}" '
                         f'fill="{colours[0] if index == 0 else colours[2] if time > own else colours[1]}"/>')
            parts.append(text(end + 4, y + 12, f"{time / own:.2f}" if index else "1", size=11))
            y += row
        y += 7
    parts.append(f'<line x1="{place(1):.1f}" y1="52" x2="{place(1):.1f}" y2="{bottom}" stroke="#222"/>')
    return document(width, bottom + 8, parts)


def short(number):
    for factor, unit in ((1e9, "G"), (1e6, "M"), (1e3, "k")):
        if number >= factor:
            return f"{number / factor:g}{unit}"
    return f"{number:g}"


def panel(curve, x, y, width, height):
    title, across, up, lines = curve
    points = [point for line in lines.values() for point in line if point[1] > 0]
    decades = [(math.floor(math.log10(min(p[axis] for p in points)) + 1e-9),
                math.ceil(math.log10(max(p[axis] for p in points)) - 1e-9)) for axis in (0, 1)]
    decades = [(low, max(high, low + 1)) for low, high in decades]

    def place(point):
        along = [(math.log10(value) - low) / (high - low) for value, (low, high) in zip(point, decades)]
        return x + along[0] * width, y + height - along[1] * height

    parts = [text(x, y - 10, title, size=13), text(x + width, y + height + 32, across, "end", 11),
             text(x + 4, y + 12, up, size=11, colour="#777")]
    for exponent in range(decades[0][0], decades[0][1] + 1):
        at = place((10 ** exponent, 10 ** decades[1][0]))[0]
        parts.append(f'<line x1="{at:.1f}" y1="{y}" x2="{at:.1f}" y2="{y + height}" stroke="#ddd"/>')
        parts.append(text(at, y + height + 16, short(10 ** exponent), "middle", 10))
    for exponent in range(decades[1][0], decades[1][1] + 1):
        at = place((10 ** decades[0][0], 10 ** exponent))[1]
        parts.append(f'<line x1="{x}" y1="{at:.1f}" x2="{x + width}" y2="{at:.1f}" stroke="#ddd"/>')
        parts.append(text(x - 5, at + 4, short(10 ** exponent), "end", 10))
    for index, (name, line) in enumerate(lines.items()):
        places = [place(point) for point in line if point[1] > 0]
        parts.append(f'<polyline fill="none" stroke="{colours[index]}" stroke-width="2" points="'
                     + " ".join(f"{a:.1f},{b:.1f}" for a, b in places) + '"/>')
        parts += [f'<circle cx="{a:.1f}" cy="{b:.1f}" r="3" fill="{colours[index]}"/>' for a, b in places]
        parts.append(text(x + 10, y + 28 + 14 * index, name, size=11, colour=colours[index]))
    return parts


def panels(curves):
    width, height, parts = 370, 220, []
    for index, curve in enumerate(curves):
        parts += panel(curve, 70 + (index % 2) * (width + 90), 40 + (index // 2) * (height + 90), width, height)
    return document(2 * (width + 90) + 20, (len(curves) + 1) // 2 * (height + 90) + 10, parts)

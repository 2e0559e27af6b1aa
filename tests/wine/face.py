"""Where things are on the program's face, in twips (1440 an inch) from its upper left corner.

This is what the pictures of the face are drawn for, written down a second time: a control that leaves its window
in the picture is found here, and the tests find a control by its place.
"""

FULL, SHORT, DIP = "full", "short", "dip"
SIZES = {FULL: (9600, 3900), SHORT: (9600, 1860), DIP: (9600, 3900)}

# Controls, as (left, top, width, height)
_BASE = {
    "logo": (300, 150, 1440, 360),
    "message": (2010, 195, 2940, 270),
    "window menu": (5280, 180, 720, 300),
    "settings menu": (6060, 180, 840, 300),
    "help menu": (6960, 180, 600, 300),
    "help": (7860, 180, 360, 300),
    "minimize": (8400, 180, 360, 300),
    "close": (8820, 180, 360, 300),
    "forward readout": (6615, 960, 1200, 420),
    "reflected readout": (6615, 1980, 1200, 420),
    "vswr readout": (6615, 3000, 1200, 420),
    "forward ranges": (7980, 900, 690, 2430),
    "reflected ranges": (8730, 900, 690, 2430),
    "mode panel": (300, 2700, 3300, 630),
    "reset": (3990, 2850, 1200, 330),
    "status": (330, 3480, 3240, 240),
    "port": (3735, 3510, 285, 180),
    "rx light": (4320, 3510, 180, 180),
    "tx light": (4620, 3510, 180, 180),
    "swr label": (5490, 3495, 1050, 210),
    "power label": (6870, 3495, 1050, 210),
}
MODES = ("fast", "medium", "slow", "dip")
_GRAPHS = {"forward": (300, 600), "reflected": (300, 1620)}
_SCALE = {"left": (30, 570, 600, 195), "middle": (2790, 570, 600, 195), "right": (5550, 570, 600, 195)}


def _full_controls():
    places = dict(_BASE)
    for graph, (left, top) in _GRAPHS.items():
        places[f"{graph} graph"] = (left, top, 6180, 765)
        places[f"{graph} ticks"] = (left + 30, top + 480, 6120, 90)
        for name, (x, y, width, height) in _SCALE.items():
            places[f"{graph} {name}"] = (left + x, top + y, width, height)
        ranges = _BASE[f"{graph} ranges"]
        for i in range(9):
            places[f"{graph} range {i}"] = (ranges[0] + 195, ranges[1] + 22 + 270 * i, 465, 225)
    for i, mode in enumerate(MODES):
        places[mode] = (300 + 180 + 810 * i, 2700 + 150, 615, 330)
    return places


_FULL = _full_controls()
_HIDDEN_IN_SHORT = ("logo", "reflected graph", "reflected ticks", "reflected left", "reflected middle",
                    "reflected right", "reflected readout", "mode panel", *MODES, "reset", "forward ranges",
                    "reflected ranges", *(f"{graph} range {i}" for graph in _GRAPHS for i in range(9)))
_HIDDEN_IN_DIP = ("reflected readout", "forward ranges", "reflected ranges",
                  *(f"{graph} range {i}" for graph in _GRAPHS for i in range(9)))
_MOVED_IN_SHORT = {"vswr readout": (7890, 960), "status": (330, 600 + 765 + 25), "port": (3735, 1400),
                   "rx light": (4320, 1400), "tx light": (4620, 1400), "swr label": (5490, 1410),
                   "power label": (6870, 1410)}

CONTROLS = {
    FULL: _FULL,
    SHORT: {name: (*_MOVED_IN_SHORT.get(name, place[:2]), *place[2:])
            for name, place in _FULL.items() if name not in _HIDDEN_IN_SHORT},
    # In VSWR dip mode the lower bar is a VSWR bar
    DIP: {name: place for name, place in _FULL.items() if name not in _HIDDEN_IN_DIP}
    | {"dip caption": (6585, 1710, 1245, 165)},
}

# Lamps and markers: drawn on the face, no windows of their own
LAMPS = {
    FULL: {"swr lamp": (5280, 3525, 150, 150), "power lamp": (6660, 3525, 150, 150),
           "reset lamp": (3855, 2970, 90, 90),
           **{f"{mode} marker": (300 + 60 + 810 * i, 2700 + 270, 90, 90) for i, mode in enumerate(MODES)},
           **{f"{graph} marker {i}": (_BASE[f"{graph} ranges"][0] + 45, 990 + 270 * i, 90, 90)
              for graph in _GRAPHS for i in range(9)}},
    SHORT: {"swr lamp": (5280, 1440, 150, 150), "power lamp": (6660, 1440, 150, 150)},
}
LAMPS[DIP] = {name: place for name, place in LAMPS[FULL].items() if not name.startswith(("forward", "reflected"))}

# Bare face with nothing on it, the same in both views
BARE = (1890, 315)


def pixels(place, dpi=96):
    """The pixels (left, top, right, bottom) of a place in twips: each edge to the nearest."""
    left, top, width, height = place
    return tuple((2 * edge * dpi + 1440) // 2880 for edge in (left, top, left + width, top + height))

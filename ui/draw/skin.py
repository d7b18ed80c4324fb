#!/usr/bin/env python3
"""Draws the skin: every SVG picture in ../skin, as one family.

Run it after a change; the pictures are committed. Icons stand in a field of 24 by 24 and have one stroke
width. The root's "color" is the ink in which the windows write a caption below the picture.
"""
import os

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "skin")
STROKE = 1.75
MUTE, TEXT, AMBER, DARK = "#c4c1b9", "#f2f0ea", "#FFCC00", "#2b2b2b"

ICONS = {
    "page": '<path d="M5 4h11l3 3v13H5z"/><path d="M8 11h8M8 15h6"/>',
    "calendar": '<rect x="4" y="5" width="16" height="15" rx="2"/><path d="M4 10h16M8 3v4M16 3v4"/>',
    "lens": '<circle cx="10.5" cy="10.5" r="6"/><path d="M15 15l5 5"/>',
    "bars": '<path d="M5 20V10M12 20V4M19 20v-7"/>',
    "pen": '<path d="M4 20l1-4L16 5l3 3L8 19z"/><path d="M13 20h7"/>',
    "balloon": '<path d="M4 5h16v11H10l-4 4v-4H4z"/>',
    "gear": '<circle cx="12" cy="12" r="3"/><path d="M12 4v3M12 17v3M4 12h3M17 12h3M6.5 6.5l2 2M15.5 15.5l2 2'
            'M17.5 6.5l-2 2M8.5 15.5l-2 2"/>',
    "help": '<circle cx="12" cy="12" r="8"/><path d="M9.7 9.5a2.4 2.4 0 1 1 3.3 2.2c-.7.3-1 .8-1 1.6M12 16.5v.1"/>',
    "leave": '<path d="M9 5H5v14h4M14 8l4 4-4 4M18 12H9"/>',
    "bin": '<path d="M5 7h14M9 7V4h6v3M7 7l1 13h8l1-13"/>',
    "stop": '<circle cx="12" cy="12" r="8"/><path d="M9 9l6 6M15 9l-6 6"/>',
    "back": '<path d="M14 6l-6 6 6 6"/>',
    "forward": '<path d="M10 6l6 6-6 6"/>',
    "outside": '<path d="M10 5H5v14h14v-5M14 5h5v5M19 5l-8 8"/>',
    "up": '<path d="M6 15l6-6 6 6"/>',
    "down": '<path d="M6 9l6 6 6-6"/>',
    "arrow": '<path d="M4 12h15M13 6l6 6-6 6"/>',
    "cross": '<path d="M7 7l10 10M17 7L7 17"/>',
    "tick": '<path d="M5 12.5l4.5 4.5L19 7"/>',
    "send": '<path d="M4 11.500L20 4l-5 16-4-6.500zM11 13.500L20 4"/>',
    "question": '<path d="M5 4h11l3 3v13H5z"/><path d="M10 10.200a2 2 0 1 1 2.800 1.900c-.6.3-.8.6-.8 1.300M12 16.400v.1"/>',
    "compare": '<path d="M4 5h7v14H4zM13 5h7v14h-7z"/><path d="M6 9h3M6 12h3M15 9h3M15 12h3M15 15h3"/>',
    "new": '<path d="M12 4H5v16h14v-8"/><path d="M18 3v6M15 6h6"/>',
    "bell": '<path d="M6 17V11a6 6 0 0 1 12 0v6l1.500 1.500h-15z"/><path d="M10.500 21h3M12 3v2"/>',
    "open": '<rect x="4" y="4" width="16" height="16" rx="2"/><path d="M8 12h8"/>',
    "closed": '<rect x="4" y="4" width="16" height="16" rx="2"/><path d="M8 12h8M12 8v8"/>',
    "minus": '<path d="M6 16h12"/>',
}


def icon(name, color, x, y, size, width=STROKE):
    scale = size / 24
    return (f'<g transform="translate({x} {y}) scale({scale:g})" fill="none" stroke="{color}" '
            f'stroke-width="{width / scale if scale < 1 else width:g}" stroke-linecap="round" '
            f'stroke-linejoin="round">{ICONS[name]}</g>')


def gradient(name, top, bottom):
    return (f'<linearGradient id="{name}" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="{top}"/>'
            f'<stop offset="1" stop-color="{bottom}"/></linearGradient>')


def save(path, width, height, body, color=None, defs=""):
    path = os.path.join(FOLDER, path + ".svg")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    ink = f' color="{color}"' if color else ""
    head = f"<defs>{defs}</defs>" if defs else ""
    with open(path, "w", encoding="utf-8") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
                   f'viewBox="0 0 {width} {height}"{ink}>{head}{body}</svg>\n')


def cell(width, height, state, radius=8):
    """The ground of a menu button in a state."""
    box = f'x="0.5" y="0.5" width="{width - 1}" height="{height - 1}" rx="{radius}"'
    if state == "over":
        return f'<rect {box} fill="#ffffff" fill-opacity="0.09"/>'
    if state == "on":
        return (f'<rect {box} fill="#000000" fill-opacity="0.38"/>'
                f'<rect x="1" y="1" width="{width - 2}" height="{height - 2}" rx="{radius}" fill="none" '
                f'stroke="#000000" stroke-opacity="0.35"/>')
    return ""


STATES = {"Off": ("off", MUTE), "Over": ("over", AMBER), "On": ("on", AMBER)}


def main_window():
    width, height = 68, 58
    names = ["page", "calendar", "lens", "bars", "pen", "balloon", "gear", "help", "leave", "bin"]
    for index, name in enumerate(names):
        for word, (state, ink) in STATES.items():
            save(f"frmMain/imgBtn{word}_{index}", width, height,
                 cell(width, height, state) + icon(name, ink, 23, 8, 22), ink)
    # The eleventh button stands in the short strip, over the mark of the program.
    for word, (state, ink) in STATES.items():
        ground = f'<rect x="0" y="0" width="{width}" height="{height}" rx="8" fill="#373737"/>'
        save(f"frmMain/imgBtn{word}_10", width, height,
             ground + cell(width, height, state) + icon("stop", ink, 23, 8, 22), ink)
    for index, name in enumerate(["up", "down"]):
        for word, fill, ink in (("Off", "url(#g)", TEXT), ("On", "#2f2f2f", AMBER)):
            save(f"frmMain/imgScroll{word}_{index}", 28, 25,
                 f'<rect x="0.5" y="0.5" width="27" height="24" rx="6" fill="{fill}" stroke="#262626"/>'
                 + icon(name, ink, 6, 4.5, 16), ink, gradient("g", "#5a5a5a", "#464646"))


def logo(size):
    """The mark: a letter on an amber tile, with the caret of an input box beside it."""
    s = size / 64
    tile = (f'<rect x="{2 * s:g}" y="{2 * s:g}" width="{60 * s:g}" height="{60 * s:g}" rx="{15 * s:g}" '
            f'fill="url(#a)" stroke="#8a6a00" stroke-width="{1.2 * s:g}"/>'
            f'<path transform="scale({s:g})" fill="#2b2b2b" d="M12 46v-3l4-1.2V22.2L12 21v-3h10.500l9.500 18.500'
            f'L41.500 18H52v3l-4 1.200v19.600l4 1.200v3H37.500v-3l4-1.200V26.500L31.200 46h-1.700L19.500 26.500v15.300l4 '
            f'1.200v3z"/>')
    return tile


def logos():
    defs = gradient("a", "#ffe07a", "#f0b000")
    save("logo", 40, 40, logo(40), None, defs)
    save("marovane", 64, 64, logo(64), None, defs)


def close_button():
    for name, ground, ink in (("imgClose", "none", "#dddddd"), ("imgExit_0", "none", "#dddddd"),
                              ("imgExit_1", "#a83232", "#ffffff"), ("imgExit_2", "#7c2222", "#ffffff")):
        box = "" if ground == "none" else f'<rect width="24" height="24" rx="6" fill="{ground}"/>'
        save(name, 24, 24, box + icon("cross", ink, 3, 3, 18), ink)
    save("imgMinimize", 24, 24, icon("minus", "#dddddd", 3, 1, 18), "#dddddd")


def marks():
    """Indicators of check boxes and options, 18 by 18."""
    def box(mark, over=False):
        edge = AMBER if over else "#171717"
        return f'<rect x="1" y="1" width="16" height="16" rx="4" fill="#242424" stroke="{edge}"/>' + mark
    def ring(mark, over=False):
        edge = AMBER if over else "#171717"
        return f'<circle cx="9" cy="9" r="8" fill="#242424" stroke="{edge}"/>' + mark
    tick = icon("tick", AMBER, 3, 3, 12, 2)
    dot = f'<circle cx="9" cy="9" r="4" fill="{AMBER}"/>'
    for over, suffix in ((False, ""), (True, "_over")):
        save("check_off" + suffix, 18, 18, box("", over))
        save("check_on" + suffix, 18, 18, box(tick, over))
        save("option_off" + suffix, 18, 18, ring("", over))
        save("option_on" + suffix, 18, 18, ring(dot, over))
    save("arrow_down", 16, 16, icon("down", TEXT, 0, 0, 16))


def message_icons():
    stroke = ('fill="none" stroke="{0}" stroke-width="2.4" stroke-linecap="round" stroke-linejoin="round"')
    signs = [("#3e5b73", "#cfe8ff", '<path d="M24 22v11M24 15.500v.2"/>'),
             ("#6b4a23", "#ffd27a", '<path d="M24 14v13M24 33v.2"/>'),
             ("#3e5b73", "#cfe8ff", '<path d="M19 19a5 5 0 1 1 7 4.600c-1.500.7-2 1.700-2 3.400M24 33v.2"/>')]
    for index, (ground, ink, sign) in enumerate(signs):
        save(f"frmMessage/imgIcons_{index}", 48, 48,
             f'<circle cx="24" cy="24" r="23" fill="{ground}"/>'
             f'<circle cx="24" cy="24" r="22.500" fill="none" stroke="#ffffff" stroke-opacity="0.12"/>'
             f'<g {stroke.format(ink)}>{sign}</g>')


def progress_bar():
    flash = '<rect width="100" height="8" fill="url(#f)"/>'
    defs = (f'<linearGradient id="f" x1="0" y1="0" x2="1" y2="0"><stop offset="0" stop-color="{AMBER}" '
            f'stop-opacity="0"/><stop offset="0.5" stop-color="{AMBER}"/><stop offset="1" stop-color="{AMBER}" '
            f'stop-opacity="0"/></linearGradient>')
    save("imgProgressFlash", 100, 8, flash, None, defs)


def browser():
    for index, name in enumerate(["back", "forward", "outside"]):
        for word, ground, ink in (("Off", "", MUTE), ("On", "on", AMBER)):
            save(f"frmBrowser/imgBtn{word}_{index}", 34, 30, cell(34, 30, ground, 7) + icon(name, ink, 6, 4, 22),
                 ink)
    tabs("frmBrowser")


def tabs(form, count=2):
    for index in range(count):
        save(f"{form}/imgTabOn_{index}", 110, 32,
             '<path d="M0.5 32V9a8 8 0 0 1 8-8h93a8 8 0 0 1 8 8v23z" fill="#585858" stroke="#6e6e6e"/>'
             f'<rect x="10" y="1" width="90" height="2" rx="1" fill="{AMBER}"/>', AMBER)
        save(f"{form}/imgTabOff_{index}", 110, 32,
             '<path d="M0.5 32V11a8 8 0 0 1 8-8h93a8 8 0 0 1 8 8v21z" fill="#333333" stroke="#444444"/>', MUTE)


def diary():
    tabs("frmDiary")


def word_helper():
    tabs("frmCollocation", 4)
    tabs("frmSuggest")
    save("frmCollocation/imgArrow", 24, 24, icon("arrow", AMBER, 0, 0, 24, 2.2), AMBER)


def essay():
    """Buttons of the essay window. The first one tells in words what it does: it stops a walk, or leaves."""
    width, height = 76, 60

    def word(text, ink):
        return (f'<text x="{width / 2:g}" y="{height - 9.5:g}" font-family="Noto Sans CJK TC" font-size="12" '
                f'font-weight="500" text-anchor="middle" fill="{ink}">{text}</text>')

    for state, (ground, ink) in STATES.items():
        def button(name, sign, text=""):
            save(f"frmEssay/{name}", width, height,
                 cell(width, height, ground) + icon(sign, ink, 27, 9, 22) + (word(text, ink) if text else ""), ink)
        button(f"imgStop{state}_0", "stop", "中斷批改")
        button(f"imgBtn{state}_0", "leave", "離開")
        for index, sign in enumerate(["send", "question"], 1):
            button(f"imgBtn{state}_{index}", sign)
        for index, sign in enumerate(["compare", "pen", "new"]):
            button(f"imgCmd{state}_{index}", sign)


def splash():
    width, height = 520, 300
    lines = "".join(f'<path d="M0 {y}h{width}" stroke="#ffffff" stroke-opacity="0.035"/>' for y in range(30, height, 30))
    sentence = ('<rect x="40" y="176" width="440" height="42" rx="9" fill="#1d1d1d" stroke="#121212"/>'
                f'<path d="M57 188v18" stroke="{AMBER}" stroke-width="2"/>')
    body = (lines + f'<g transform="translate(40 48)">{logo(84)}</g>' + sentence)
    save("frmSplash/picBG", width, height, body, None, gradient("a", "#ffe07a", "#f0b000"))


def page_pictures():
    """Pictures for pages, turned into GIF by page_images.sh."""
    for name, ink, open_ in (("folder-off", "#FFCC00", False), ("folder-on", "#FFCC00", True)):
        body = '<path d="M2 4.500h4.500l1.500 2h6v7.500H2z"/>' if not open_ else \
               '<path d="M2 13.500v-9h4.500l1.500 2h5v2M2 13.500l2.500-5H15l-2.500 5z"/>'
        save(f"pages/{name}", 16, 16, f'<g fill="none" stroke="{ink}" stroke-width="1.4" '
             f'stroke-linejoin="round">{body}</g>')
    for name, top, bottom, ink in (("btnok_off", "#5a5a5a", "#464646", TEXT), ("btnok_over", "#6b6b6b", "#535353", AMBER),
                                   ("btnok_on", "#333333", "#333333", AMBER)):
        save(f"pages/{name}", 88, 32,
             f'<rect x="0.5" y="0.5" width="87" height="31" rx="7" fill="url(#g)" stroke="#222222"/>'
             f'<text x="44" y="21.500" font-family="Noto Sans CJK TC" font-size="14" text-anchor="middle" '
             f'fill="{ink}">確定</text>', ink, gradient("g", top, bottom))


def report_pictures():
    """Pictures of the reports on essays, which the server has; turned into GIF by page_images.sh."""
    def small(name, sign, ink, width=1.6):
        save(f"pages/{name}", 16, 16, icon(sign, ink, 0.5, 0.5, 15, width))
    small("ico_mrv_ext", "outside", "#C96F38")
    small("ico_mrv_hint", "lens", "#2A66B8")
    small("ico_mrv_close", "cross", "#606060")
    small("ico_mrv_closeup", "up", "#606060", 2)
    save("pages/ico_mrv_err", 16, 16, '<circle cx="8" cy="8" r="7" fill="#D0301F"/>'
         + icon("down", "#ffffff", 2.5, 3, 11, 2.2))
    save("pages/mrv_icon_warning", 18, 16, '<path d="M9 1.500L17 15H1z" fill="#F0B400" stroke="#A87500" '
         'stroke-linejoin="round"/><path d="M9 6v4.500M9 12.600v.2" stroke="#3a2a00" stroke-width="1.7" '
         'stroke-linecap="round"/>')
    # The report takes 150 pixels off behind this one, so that many stand empty at its right.
    for frame, fill in (("1", "#E0005A"), ("2", "#FF7FAE")):
        save(f"pages/ico_sys_break_point_flash_{frame}", 88 + 150, 20,
             f'<path d="M1 10L9 1.500h70a4 4 0 0 1 4 4v9a4 4 0 0 1-4 4H9z" fill="{fill}"/>'
             '<text x="47" y="14.500" font-family="Noto Sans CJK TC" font-size="12" font-weight="bold" '
             'text-anchor="middle" fill="#ffffff">在此中斷</text>')


def topic_pictures():
    """Pictures of the lists of topics, which the server has too; they stand on the dark ground."""
    def small(name, sign, ink, width=1.6):
        save(f"pages/{name}", 16, 16, icon(sign, ink, 0.5, 0.5, 15, width))
    small("icon_obj", "forward", AMBER, 2)
    small("mrv_icon_check", "tick", "#00FF00", 2.2)
    small("mrv_icon_finalset", "send", "#00FFFF", 1.4)
    small("ico_bell", "bell", AMBER)
    small("ico_tree_0", "open", "#00FFFF", 1.4)
    small("ico_tree_1", "closed", "#00FFFF", 1.4)
    small("ico_del", "bin", "#FF9A8A")
    save("pages/tab", 120, 28, '<path d="M0 28V7a6 6 0 0 1 6-6h106a6 6 0 0 1 6 6v21z" fill="url(#g)"/>',
         None, gradient("g", "#4a4a4a", "#333333"))
    save("pages/tab_line", 720, 2, '<path d="M0 0h720v2H0z" fill="#333333"/>')


for draw in (main_window, logos, close_button, marks, message_icons, progress_bar, browser, diary, word_helper, essay, splash,
             page_pictures, report_pictures, topic_pictures):
    draw()

"""What a screen reader is told of the program, over AT-SPI. Wants the Python of the system, which has pyatspi.

  accessible.py watch               says what happens, as it happens: the event, and role, name and description of where
  accessible.py shows WINDOW        ends with 3 unless the window is on the screen
  accessible.py check WINDOW        fails unless everything that is seen in the window has a role and a name
  accessible.py check-next WINDOW   the same for one that comes up after this has said "watching", such as a menu, which
                                    belongs to no list of windows
  accessible.py reads WINDOW TEXT   fails unless a page in the window holds the text

A window is named by the beginning of its title."""

import sys

import pyatspi

PROGRAM = "marovane"
EVENTS = {
    "object:state-changed:focused": "focus",
    "object:property-change:accessible-description": "description",
    "window:activate": "window",
}
NO_ROLE = (pyatspi.ROLE_INVALID, pyatspi.ROLE_UNKNOWN, pyatspi.ROLE_FILLER)
PRESSED = (pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_MENU_ITEM)


def has_state(thing, state):
    return thing.getState().contains(state)


def shown_window(title):
    for program in pyatspi.Registry.getDesktop(0):
        if program is None or program.name != PROGRAM:
            continue
        for window in program:
            if window and window.name.startswith(title) and has_state(window, pyatspi.STATE_SHOWING):
                return window
    print(f"no window {title}", file=sys.stderr)
    sys.exit(3)


def walk(thing, enters_pages):
    """Whatever is seen. What a page holds is the web engine's; its pane has the name."""
    yield thing
    if thing.getRole() == pyatspi.ROLE_DOCUMENT_WEB and not enters_pages:
        return
    for child in thing:
        if child and (enters_pages or has_state(child, pyatspi.STATE_SHOWING)):
            yield from walk(child, enters_pages)


def holds_page(thing):
    """The frame that the web engine puts around a page has no role of its own, and need not have one."""
    return any(child and child.getRole() == pyatspi.ROLE_DOCUMENT_WEB for child in thing)


def is_faulty(thing):
    if thing.getRole() == pyatspi.ROLE_DOCUMENT_WEB:
        return False
    return not thing.name or (thing.getRole() in NO_ROLE and not holds_page(thing))


def check(title):
    check_window(title, shown_window(title))


def check_window(title, window):
    found = list(walk(window, enters_pages=False))
    faulty = [f"{thing.getRoleName()} '{thing.name}' in '{thing.parent.name}'" for thing in found if is_faulty(thing)]
    presses = sum(thing.getRole() in PRESSED for thing in found)
    if faulty or not presses:
        sys.exit(f"{title}: {presses} buttons, without role or name: {faulty}")


def check_next(title):
    came = []

    def take(event):
        if event.source.name.startswith(title):
            came.append(event.source)
            pyatspi.Registry.stop()

    pyatspi.Registry.registerEventListener(take, "window:activate")
    print("watching", flush=True)
    pyatspi.Registry.start()
    check_window(title, came[0])


def reads(title, text):
    # Each question takes a while on a busy machine, so that it ends where the text is found.
    if not any(text in thing.name for thing in walk(shown_window(title), enters_pages=True)):
        sys.exit(f"{title}: no '{text}'")


def report(event):
    if str(event.type).startswith("object:state-changed") and not event.detail1:
        return  # what has lost the focus
    try:
        source = event.source
        words = [EVENTS[str(event.type)], source.getRoleName(), source.name, source.description]
    except (LookupError, RuntimeError):
        return  # it has gone already
    print(" ".join(" | ".join(words).split()), flush=True)


def watch():
    pyatspi.Registry.registerEventListener(report, *EVENTS)
    print("watching", flush=True)
    pyatspi.Registry.start()


if __name__ == "__main__":
    commands = {"watch": watch, "shows": shown_window, "check": check, "check-next": check_next, "reads": reads}
    commands[sys.argv[1]](*sys.argv[2:])

#include "qt/placement.h"

#include <QGuiApplication>
#include <algorithm>

namespace marovane {

bool ProgramPlacesWindows() { return !QGuiApplication::platformName().startsWith("wayland"); }

namespace {

QRect MovedInto(QRect window, const QRect& room, bool isResizable) {
  if (isResizable) window.setSize(window.size().boundedTo(room.size()));
  window.moveLeft(std::max(std::min(window.left(), room.right() + 1 - window.width()), room.left()));
  window.moveTop(std::max(std::min(window.top(), room.bottom() + 1 - window.height()), room.top()));
  return window;
}

// The larger of the two parts that the strip leaves of the usable area.
QRect BesideStrip(const QRect& usable, const QRect& strip) {
  QRect room = usable;
  if (strip.top() - usable.top() >= usable.bottom() - strip.bottom()) {
    room.setBottom(strip.top() - 1);
  } else {
    room.setTop(strip.bottom() + 1);
  }
  return room;
}

}  // namespace

QRect PlaceInSight(const QRect& window, const QRect& usable, const QRect& strip, bool isResizable) {
  const QRect inside = MovedInto(window, usable, isResizable);
  if (!inside.intersects(strip)) return inside;
  const QRect room = BesideStrip(usable, strip);
  if (room.height() < inside.height() / 2) return inside;  // the strip is in the middle of the screen
  return MovedInto(MovedInto(inside, room, isResizable), usable, false);
}

bool IsWithinReach(const QRect& window) { return QGuiApplication::screenAt(window.center()) != nullptr; }

}  // namespace marovane

#include "qt/placement.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
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

// The larger of the two parts that the strip leaves above and below itself.
QRect AboveOrBelow(QRect room, const QRect& strip) {
  if (strip.top() - room.top() >= room.bottom() - strip.bottom()) {
    room.setBottom(strip.top() - 1);
  } else {
    room.setTop(strip.bottom() + 1);
  }
  return room;
}

QRect LeftOrRight(QRect room, const QRect& strip) {
  if (strip.left() - room.left() >= room.right() - strip.right()) {
    room.setRight(strip.left() - 1);
  } else {
    room.setLeft(strip.right() + 1);
  }
  return room;
}

bool Fits(const QRect& window, const QRect& room) {
  return window.width() <= room.width() && window.height() <= room.height();
}

}  // namespace

QRect PlaceInSight(const QRect& window, const QRect& usable, const QRect& strip, bool isResizable) {
  const QRect inside = MovedInto(window, usable, isResizable);
  if (!inside.intersects(strip)) return inside;
  const QRect room = AboveOrBelow(usable, strip);
  const QRect beside = LeftOrRight(usable, strip);
  if (!Fits(inside, room) && Fits(inside, beside)) return MovedInto(inside, beside, false);
  if (room.height() < inside.height() / 2) return inside;  // the strip is in the middle of the screen
  return MovedInto(inside, room, isResizable);
}

bool IsOnScreen(const QRect& window) {
  QRegion rest(window);
  for (const QScreen* screen : QGuiApplication::screens()) rest -= screen->availableGeometry();
  return rest.isEmpty();
}

bool IsWithinReach(const QRect& window) { return QGuiApplication::screenAt(window.center()) != nullptr; }

}  // namespace marovane

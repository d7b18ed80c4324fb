#include "qt/window_frame.h"

#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "qt/placement.h"

namespace marovane {

namespace {

constexpr int kShadow = 16;  // width of the shadow, logical pixels
constexpr int kRadius = 10;
constexpr int kTitleHeight = 34;
constexpr int kGrip = 6;  // how near to an edge the mouse resizes

// nullptr: not on X, or on no screen at all.
xcb_connection_t* XConnection() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 == nullptr ? nullptr : x11->connection();
}

xcb_atom_t AtomOf(xcb_connection_t* connection, const std::string& name) {
  const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  auto* const reply = xcb_intern_atom_reply(connection, cookie, nullptr);
  const xcb_atom_t atom = reply == nullptr ? XCB_NONE : reply->atom;
  std::free(reply);
  return atom;
}

// Without a compositing manager an X server shows what should be transparent in black.
bool IsComposited() {
  xcb_connection_t* const connection = XConnection();
  if (connection == nullptr) return true;
  const auto cookie = xcb_get_selection_owner(connection, AtomOf(connection, "_NET_WM_CM_S0"));
  auto* const owner = xcb_get_selection_owner_reply(connection, cookie, nullptr);
  const bool isComposited = owner != nullptr && owner->owner != XCB_NONE;
  std::free(owner);
  return isComposited;
}

QPainterPath RoundedPath(const QRectF& rect, qreal radius) {
  QPainterPath path;
  path.addRoundedRect(rect, radius, radius);
  return path;
}

}  // namespace

void SendToScreen() {
  if (xcb_connection_t* const connection = XConnection()) xcb_flush(connection);
}

bool IsMouseHeld() {
  if (QGuiApplication::mouseButtons() != Qt::NoButton) return true;
  xcb_connection_t* const connection = XConnection();
  if (connection == nullptr) return false;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  auto* const pointer = xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr);
  constexpr unsigned kButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
  const bool isHeld = pointer != nullptr && (pointer->mask & kButtons) != 0;
  std::free(pointer);
  return isHeld;
}

WindowFrame::WindowFrame() {
  setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
  if (IsComposited()) {
    setAttribute(Qt::WA_TranslucentBackground);
    // A Wayland compositor would take the shadow for a part of the window when it places or snaps it.
    if (ProgramPlacesWindows()) margin_ = kShadow;
  }
  setMouseTracking(true);
}

void WindowFrame::SetContent(QWidget* content) {
  content_ = content;
  captionHeight_ = content->property("captionHeight").toInt();
  isResizable_ = content->property("resizable").toBool();
  if (content->property("popup").toBool()) {
    setWindowFlags(Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
  }
  if (content->property("dialog").toBool()) {
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
  }
  content->setParent(this);
  // One with a name of its own has been described before it was the content of a window.
  QAccessible::deleteAccessibleInterface(
      QAccessible::uniqueId(QAccessible::queryAccessibleInterface(content)));
  content->setMouseTracking(true);
  content->installEventFilter(this);
  if (content->property("titleBar").toBool()) AddTitleBar();
  SetContentGeometry(QRect(pos(), content->size()));
}

void WindowFrame::SetContentGeometry(const QRect& content) {
  const QRect outer = content.marginsAdded(Margins());
  if (outer != geometry()) setGeometry(outer);
}

void WindowFrame::SetOwner(const WindowFrame* owner) {
  winId();  // makes the handle
  windowHandle()->setTransientParent(owner == nullptr ? nullptr : owner->windowHandle());
}

// The toolkit leaves the hint that a window begins minimised, also when the window manager has restored it
// since.
void WindowFrame::Restore() {
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  xcb_connection_t* const connection = XConnection();
  if (connection == nullptr || isVisible() || windowHandle() == nullptr) return;
  const auto window = static_cast<xcb_window_t>(internalWinId());
  xcb_icccm_wm_hints_t hints;
  const auto cookie = xcb_icccm_get_wm_hints(connection, window);
  if (xcb_icccm_get_wm_hints_reply(connection, cookie, &hints, nullptr) == 0) return;
  xcb_icccm_wm_hints_set_normal(&hints);
  xcb_icccm_set_wm_hints(connection, window, &hints);
}

void WindowFrame::SetTopMost(bool topMost) {
  if (windowHandle() != nullptr) {
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topMost);
  } else {
    setWindowFlag(Qt::WindowStaysOnTopHint, topMost);
  }
}

// From one of its windows to another a program may hand the keyboard on by itself (ICCCM, 4.1.7).
void WindowFrame::TakeKeyboard() {
  activateWindow();
  xcb_connection_t* const connection = XConnection();
  if (connection == nullptr || windowHandle() == nullptr) return;
  const auto cookie = xcb_set_input_focus_checked(
      connection, XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(internalWinId()), XCB_CURRENT_TIME);
  xcb_discard_reply(connection, cookie.sequence);  // one that cannot be seen yet gets it from the manager
}

void WindowFrame::SetOpacity(double opacity) {
  if (ProgramPlacesWindows()) setWindowOpacity(opacity);
}

// A window manager that is asked to move a window at each click may hear of it after the button was released,
// and the window sticks to the mouse.
void WindowFrame::StartDrag() {
  dragStart_ = QCursor::pos();
  awaitsDrag_ = true;
  qApp->installEventFilter(this);
}

void WindowFrame::FollowDrag(const QMouseEvent& event) {
  const bool isHeld = (event.buttons() & Qt::LeftButton) != 0;
  const QPoint way = event.globalPosition().toPoint() - dragStart_;
  if (isHeld && way.manhattanLength() < QApplication::startDragDistance()) return;
  awaitsDrag_ = false;
  qApp->removeEventFilter(this);
  if (isHeld) MoveWithMouse();
}

void WindowFrame::MoveWithMouse() {
  if (windowHandle() == nullptr || windowHandle()->startSystemMove()) return;
  // No window manager moves it for us.
  isDragging_ = true;
  dragOffset_ = dragStart_ - pos();
  grabMouse();
}

void WindowFrame::AddTitleBar() {
  titleHeight_ = captionHeight_ = kTitleHeight;
  titleBar_ = new QWidget(this);
  auto* layout = new QHBoxLayout(titleBar_);
  layout->setContentsMargins(14, 0, 8, 0);
  auto* title = new QLabel(windowTitle());
  title->setObjectName("windowTitle");
  connect(this, &QWidget::windowTitleChanged, title, &QLabel::setText);
  layout->addWidget(title, 1);
  const auto addButton = [&](const char* name, const QString& tip, auto act) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, act);
    layout->addWidget(button);
  };
  addButton("windowMinimize", "縮到最小", [this] { showMinimized(); });
  addButton("windowClose", "關閉", [this] { close(); });
}

bool WindowFrame::event(QEvent* event) {
  if (event->type() == QEvent::WinIdChange) {
    TellShadow();
    if (isVisible() && onRenewed) onRenewed();
  }
  return QWidget::event(event);
}

// So that a window manager places, snaps and moves the window by what can be seen of it.
void WindowFrame::TellShadow() const {
  xcb_connection_t* const connection = XConnection();
  if (connection == nullptr || margin_ == 0 || windowHandle() == nullptr) return;
  const auto side = static_cast<std::uint32_t>(qRound(margin_ * devicePixelRatioF()));
  const std::array<std::uint32_t, 4> sides{side, side, side, side};
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(internalWinId()),
                      AtomOf(connection, "_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, 4, sides.data());
}

void WindowFrame::resizeEvent(QResizeEvent*) {
  if (titleBar_ != nullptr) titleBar_->setGeometry(Face().left(), Face().top(), Face().width(), titleHeight_);
  if (content_ != nullptr) content_->setGeometry(rect().marginsRemoved(Margins()));
  if (!testAttribute(Qt::WA_TranslucentBackground))
    setMask(QRegion(RoundedPath(rect(), kRadius).toFillPolygon().toPolygon()));
  if (onMovedOrResized) onMovedOrResized();
}

void WindowFrame::moveEvent(QMoveEvent*) {
  if (onMovedOrResized) onMovedOrResized();
}

void WindowFrame::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (onCloseWanted) onCloseWanted();
}

void WindowFrame::leaveEvent(QEvent*) {
  if (onPointerLeft) onPointerLeft();
}

Qt::Edges WindowFrame::EdgesAt(const QPoint& position) const {
  const QRect face = Face();
  Qt::Edges edges;
  if (!isResizable_) return edges;
  if (position.x() < face.left() + kGrip) edges |= Qt::LeftEdge;
  if (position.x() > face.right() - kGrip) edges |= Qt::RightEdge;
  if (position.y() < face.top() + kGrip) edges |= Qt::TopEdge;
  if (position.y() > face.bottom() - kGrip) edges |= Qt::BottomEdge;
  return edges;
}

void WindowFrame::mousePressEvent(QMouseEvent* event) {
  const Qt::Edges edges = EdgesAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || windowHandle() == nullptr) return;
  if (edges) {
    windowHandle()->startSystemResize(edges);
  } else if (titleBar_ != nullptr && titleBar_->geometry().contains(event->position().toPoint())) {
    StartDrag();
  }
}

void WindowFrame::mouseMoveEvent(QMouseEvent* event) {
  if (isDragging_) {
    move(event->globalPosition().toPoint() - dragOffset_);
    return;
  }
  const Qt::Edges edges = EdgesAt(event->position().toPoint());
  if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge)) {
    setCursor(Qt::SizeFDiagCursor);
  } else if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge)) {
    setCursor(Qt::SizeBDiagCursor);
  } else if (edges & (Qt::LeftEdge | Qt::RightEdge)) {
    setCursor(Qt::SizeHorCursor);
  } else if (edges) {
    setCursor(Qt::SizeVerCursor);
  } else {
    unsetCursor();
  }
}

void WindowFrame::mouseReleaseEvent(QMouseEvent*) {
  if (!isDragging_) return;
  isDragging_ = false;
  releaseMouse();
}

// The toolkit reads the attribute when it makes the native window, and from that at each show.
void WindowFrame::SetQuiet(bool quiet) {
  setAttribute(Qt::WA_ShowWithoutActivating, quiet);
  if (QWindow* const native = windowHandle()) native->setProperty("_q_showWithoutActivating", quiet);
}

void WindowFrame::hideEvent(QHideEvent*) {
  if (windowType() == Qt::Popup && onPopupClosed) onPopupClosed();
}

// Enter on a button of the title bar presses that and no other.
void WindowFrame::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* const button = isEnter ? qobject_cast<QToolButton*>(focusWidget()) : nullptr;
  if (button != nullptr) return button->click();
  event->setAccepted(onKey && onKey(event->key()));
  if (!event->isAccepted()) QWidget::keyPressEvent(event);  // Escape closes a menu
}

bool WindowFrame::eventFilter(QObject* watched, QEvent* event) {
  const bool isMouse = event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease;
  if (awaitsDrag_ && isMouse && watched->isWidgetType()) FollowDrag(static_cast<QMouseEvent&>(*event));
  if (watched == content_ && isResizable_ && event->type() == QEvent::Enter) unsetCursor();
  return QWidget::eventFilter(watched, event);
}

void WindowFrame::PaintShadow(QPainter& painter) const {
  constexpr int kAlphaStep = 3;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, kAlphaStep));
  for (int inset = 0; inset < kShadow; ++inset) {
    const QRectF ring = QRectF(rect()).adjusted(inset, inset + 3, -inset, -inset + 3);
    painter.drawRoundedRect(ring, kRadius + kShadow - inset, kRadius + kShadow - inset);
  }
}

void WindowFrame::PaintFace(QPainter& painter) const {
  const QRectF face = QRectF(Face());
  QLinearGradient fill(face.topLeft(), face.bottomLeft());
  fill.setColorAt(0, QColor("#3c3c3c"));
  fill.setColorAt(1, QColor("#2b2b2b"));
  const QPainterPath outline = RoundedPath(face.adjusted(0.5, 0.5, -0.5, -0.5), kRadius);
  painter.fillPath(outline, fill);
  if (captionHeight_ > 0) {
    QLinearGradient strip(face.topLeft(), face.topLeft() + QPointF(0, captionHeight_));
    strip.setColorAt(0, QColor("#4a4a4a"));
    strip.setColorAt(1, QColor("#393939"));
    QPainterPath top;
    top.addRect(QRectF(face.left(), face.top(), face.width(), captionHeight_));
    painter.fillPath(outline.intersected(top), strip);
    painter.fillRect(QRectF(face.left() + 1, face.top() + captionHeight_, face.width() - 2, 1),
                     QColor("#212121"));
  }
  painter.setPen(QPen(QColor(255, 255, 255, 34), 1));
  painter.drawLine(face.topLeft() + QPointF(kRadius, 1.5), face.topRight() + QPointF(-kRadius, 1.5));
  painter.strokePath(outline, QPen(QColor("#6e6e6e"), 1));
}

void WindowFrame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (margin_ > 0) PaintShadow(painter);
  PaintFace(painter);
}

}  // namespace marovane

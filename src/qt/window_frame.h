// The outer window of a form: its face with rounded corners and a thin light edge, and the shadow around it.
#pragma once

#include <QPoint>
#include <QWidget>
#include <functional>

namespace marovane {

/// Sends what the toolkit still keeps for an X server, and does not wait for it. Does nothing elsewhere.
void SendToScreen();
/// True while the mouse has a button down, also one of which the toolkit has not heard yet.
bool IsMouseHeld();

/// A frameless window around a form's content. All its geometry is that of the content; the margin that the
/// shadow takes, and a title bar if it has one, are the frame's own affair.
class WindowFrame : public QWidget {
 public:
  WindowFrame();

  /// Takes the content in, and the frame's look from its dynamic properties: "captionHeight" (pixels of a
  /// title strip that the content itself fills), "titleBar" (the frame adds one of its own, with the window's
  /// title and its buttons), "resizable", "popup", "dialog".
  void SetContent(QWidget* content);
  QWidget* Content() const { return content_; }

  QRect ContentGeometry() const { return geometry().marginsRemoved(Margins()); }
  void SetContentGeometry(const QRect& content);
  /// The same for all that can be seen of the window but its shadow.
  QRect FaceGeometry() const { return geometry().marginsRemoved({margin_, margin_, margin_, margin_}); }
  QRect ContentWithin(const QRect& face) const {
    return face.marginsAdded({margin_, margin_, margin_, margin_}).marginsRemoved(Margins());
  }
  bool IsResizable() const { return isResizable_; }
  bool IsDialog() const { return windowType() == Qt::Dialog; }
  /// Keeps the dialog in front of another window, and hands the keyboard back to that; nullptr: of none.
  void SetOwner(const WindowFrame* owner);

  /// Ends a minimised state, also one that a window on no screen would begin in.
  void Restore();
  void SetTopMost(bool topMost);
  /// Opacity, 0 to 1, where the window system has any.
  void SetOpacity(double opacity);
  /// A button of the mouse is down: once the mouse has moved far enough for a drag, the window follows it
  /// until the button is released.
  void StartDrag();

  /// Has the keyboard from now on. Another window of the program has it.
  void TakeKeyboard();
  /// It takes no keyboard when it comes up, but when it is activated.
  void SetQuiet(bool quiet);

  std::function<void()> onMovedOrResized;
  std::function<void()> onCloseWanted;
  std::function<void()> onPopupClosed;
  std::function<void()> onPointerLeft;
  /// Its native window was made anew while it was on the screen, as by the first web view within it.
  std::function<void()> onRenewed;
  std::function<bool(int key)> onKey;  ///< a key that no widget wanted; true when it was used

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Around the content. Below a title bar of the frame the content leaves its thin edge free.
  QMargins Margins() const {
    const int edge = titleHeight_ > 0 ? 1 : 0;
    return {margin_ + edge, margin_ + titleHeight_, margin_ + edge, margin_ + edge};
  }
  QRect Face() const { return rect().adjusted(margin_, margin_, -margin_, -margin_); }
  void AddTitleBar();
  void TellShadow() const;
  void FollowDrag(const QMouseEvent& event);
  void MoveWithMouse();
  Qt::Edges EdgesAt(const QPoint& position) const;
  void PaintShadow(QPainter& painter) const;
  void PaintFace(QPainter& painter) const;

  QWidget* content_ = nullptr;
  int margin_ = 0;
  int captionHeight_ = 0;
  int titleHeight_ = 0;
  QWidget* titleBar_ = nullptr;
  bool isResizable_ = false;
  bool awaitsDrag_ = false;  // the button is down, and the mouse has not moved far enough yet
  bool isDragging_ = false;
  QPoint dragStart_;  // of the mouse on the screen
  QPoint dragOffset_;
};

}  // namespace marovane

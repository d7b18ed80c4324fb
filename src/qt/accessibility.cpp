#include "qt/accessibility.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QPointer>
#include <algorithm>

#include "qt/control_view.h"
#include "qt/window_frame.h"

namespace marovane {

namespace {

// Wells, lines and backgrounds, and the stores of pictures.
bool IsDecoration(const QWidget& widget) {
  if (const ControlView* const view = ControlView::Of(widget)) return view->IsDecoration();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text().isEmpty();
  return widget.property("decoration").toBool();
}

/// Holds others. Of its children those are told that say something.
class PaneAccess : public QAccessibleWidget {
 public:
  explicit PaneAccess(QWidget& pane, QAccessible::Role role = QAccessible::Pane)
      : QAccessibleWidget(&pane, role) {}

  int childCount() const override { return int(Children().size()); }
  QAccessibleInterface* child(int index) const override {
    return QAccessible::queryAccessibleInterface(Children().value(index));
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return int(Children().indexOf(qobject_cast<QWidget*>(child->object())));
  }
  QString text(QAccessible::Text kind) const override {
    QString text = QAccessibleWidget::text(kind);
    if (!text.isEmpty() || kind != QAccessible::Name) return text;
    const QWidget& window = *widget()->window();
    return window.windowTitle().isEmpty() ? window.accessibleName() : window.windowTitle();
  }

 private:
  QList<QWidget*> Children() const {
    QList<QWidget*> children;
    for (QObject* object : widget()->children()) {
      auto* const child = qobject_cast<QWidget*>(object);
      if (child != nullptr && !child->isWindow() && !IsDecoration(*child)) children << child;
    }
    return children;
  }
};

/// A window. One that shows a message says it by itself when it comes up.
class WindowAccess : public PaneAccess {
 public:
  explicit WindowAccess(WindowFrame& frame) : PaneAccess(frame, QAccessible::Window) {}

  QAccessible::Role role() const override {
    const auto labels = widget()->findChildren<QLabel*>();
    const bool isMessage =
        std::ranges::any_of(labels, [](const QLabel* label) { return label->property("message").toBool(); });
    return isMessage ? QAccessible::AlertMessage : QAccessible::Window;
  }
};

/// A control that the toolkit alone would not know for what it is, or would press behind a question.
class ControlAccess : public QAccessibleWidget {
 public:
  explicit ControlAccess(ControlView& view) : QAccessibleWidget(&view.Widget()), view_(&view) {}

  QAccessible::Role role() const override { return view_ ? view_->Role() : QAccessible::NoRole; }

  QString text(QAccessible::Text kind) const override {
    const QString text = QAccessibleWidget::text(kind);
    return text.isEmpty() && kind == QAccessible::Name && view_ ? view_->Caption() : text;
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    const auto* const button = qobject_cast<QAbstractButton*>(widget());
    if (button != nullptr && button->isCheckable()) {
      state.checkable = true;
      state.checked = button->isChecked();
    }
    if (view_ && view_->Role() == QAccessible::PageTab) {
      state.selectable = true;
      state.selected = view_->IsChosen();
    }
    // An empty label is not there for anybody.
    if (role() == QAccessible::StaticText && text(QAccessible::Name).isEmpty()) state.invisible = true;
    return state;
  }

  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (!view_ || !view_->CanBePressed() || !widget()->isEnabled()) return names;
    names.prepend(state().checkable ? toggleAction() : pressAction());
    return names;
  }

  void doAction(const QString& name) override {
    if (!view_ || (name != pressAction() && name != toggleAction())) return QAccessibleWidget::doAction(name);
    view_->Press();
  }

 private:
  QPointer<ControlView> view_;
};

QAccessibleInterface* Describe(const QString&, QObject* object) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return nullptr;
  if (auto* const frame = dynamic_cast<WindowFrame*>(widget)) return new WindowAccess(*frame);
  if (dynamic_cast<WindowFrame*>(widget->parentWidget()) != nullptr) return new PaneAccess(*widget);
  ControlView* const view = ControlView::Of(*widget);
  if (view == nullptr) return nullptr;
  if (view->Role() == QAccessible::Pane) return new PaneAccess(*widget);
  return view->Role() == QAccessible::NoRole ? nullptr : new ControlAccess(*view);
}

}  // namespace

void InstallAccessibility() { QAccessible::installFactory(&Describe); }

}  // namespace marovane

// Models of the controls on a form. A view draws them; without one they hold their state all the same.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/event.h"
#include "platform/property.h"
#include "platform/run_time_error.h"

namespace marovane {

class Form;

/// A colour, 0xRRGGBB.
using Color = unsigned;
constexpr Color Rgb(unsigned red, unsigned green, unsigned blue) { return red << 16 | green << 8 | blue; }

enum MouseButton { kLeftButton = 1, kRightButton = 2 };
enum KeyCode { kKeyBack = 8, kKeyEnter = 13, kKeyEscape = 27 };

class Control : public EventSource {
 public:
  Control(Form& form, std::string name);
  ~Control() override;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  Form& Owner() const { return form_; }
  void SetFocus();
  /// True when a user could act on it now.
  bool AcceptsInput() const;
  void RunEvent(const std::function<void()>& handler) override;

  Property<int> Left, Top, Width, Height;  ///< twips, within the form
  Property<bool> Visible{true}, Enabled{true};
  Property<std::string> ToolTipText;
  Property<std::string>
      Description;                   ///< what screen readers say beside the name, and at once when it changes
  Property<bool> HandCursor{false};  ///< shows the hand while the mouse is over it

  Event<> Click{*this}, GotFocus{*this}, LostFocus{*this};
  Event<int> MouseDown{*this}, MouseUp{*this};  ///< the button
  Event<> MouseMove{*this};
  Event<int&> KeyPress{*this};  ///< character code; set to 0 to swallow
  Event<int&> KeyDown{*this};   ///< key code; set to 0 to swallow

 private:
  Form& form_;
  std::string name_;
};

class Label : public Control {
 public:
  using Control::Control;
  enum Alignments { kLeftJustify = 0, kRightJustify = 1, kCenter = 2 };
  Property<std::string> Caption;
  Property<int> Alignment{kLeftJustify};
  Property<Color> ForeColor{Rgb(255, 255, 255)};
};

class CommandButton : public Control {
 public:
  using Control::Control;
  Property<std::string> Caption;
};

/// A box or option with a mark.
class CheckBox : public Control {
 public:
  using Control::Control;
  Property<std::string> Caption;
  Property<bool> Value{false};
};

/// One choice of several. Setting one does not clear the others of its group: the view's group does.
class OptionButton : public CheckBox {
 public:
  using CheckBox::CheckBox;
};

/// Shows a picture: the name of a file of the skin without its ending. At first it is the control's own name,
/// and so the picture drawn for this control; "" shows none.
class PictureBox : public Control {
 public:
  PictureBox(Form& form, const std::string& name) : Control(form, name), Picture(name) {}
  Property<std::string> Picture;
};

/// A text of one or more lines. Selections count UTF-16 units.
class TextBox : public Control {
 public:
  TextBox(Form& form, const std::string& name);
  Property<std::string> Text;
  Property<int> SelStart{0}, SelLength{0};
  Property<std::string> FontName;
  Property<int> FontSize{12};  ///< points
  Event<> Change{*this};

  std::string SelText() const;
  /// Puts a text in place of the selection and sets the caret after it.
  void ReplaceSelection(const std::string& text);

 private:
  Subscription text_;
};

/// A text box with styles. A style goes to the selection; with nothing selected it goes to the whole text and
/// to what is typed next.
class RichTextBox : public TextBox {
 public:
  using TextBox::TextBox;
  Property<Color> SelColor{0};
  Property<std::string> SelFontName;
  Property<int> SelFontSize{12};  ///< points
  Property<bool> SelBold{false}, SelUnderline{false};
};

class ComboBox : public Control {
 public:
  using Control::Control;
  Property<std::vector<std::string>> Items;
  Property<int> ListIndex{-1};  ///< -1: nothing chosen
  /// The chosen item's text, "" without one.
  std::string Text() const;
};

/// A whole number chosen by dragging a handle.
class Slider : public Control {
 public:
  Slider(Form& form, const std::string& name);
  Property<int> Value{0};
  Event<> Change{*this};  ///< the user or the program set the value

 private:
  Subscription value_;
};

/// N controls of one name, told apart by an index from 0. An index out of bounds is a run-time error.
template <class T, int N>
class ControlArray {
 public:
  ControlArray(Form& form, const std::string& name) {
    for (int i = 0; i < N; ++i) {
      controls_[static_cast<std::size_t>(i)] = std::make_unique<T>(form, name + "_" + std::to_string(i));
    }
  }
  T& operator()(int index) {
    if (index < 0 || index >= N) throw RunTimeError("control array index out of bounds");
    return *controls_[static_cast<std::size_t>(index)];
  }
  static constexpr int Count() { return N; }

  /// Gives each control's event a handler that gets the index.
  template <class EventMember, class Handler>
  void On(EventMember event, Handler handler) {
    for (int i = 0; i < N; ++i) {
      (*this)(i).*event = [i, handler](auto&&... arguments) {
        handler(i, std::forward<decltype(arguments)>(arguments)...);
      };
    }
  }

 private:
  std::array<std::unique_ptr<T>, N> controls_;
};

/// Sets the option of an index and clears the others; an index out of bounds clears all.
template <int N>
void SelectOption(ControlArray<OptionButton, N>& options, int index) {
  // The chosen one first: a group on the screen does not let go of its only choice.
  if (index >= 0 && index < N) options(index).Value = true;
  for (int i = 0; i < N; ++i) {
    if (i != index) options(i).Value = false;
  }
}

/// The index of the chosen option, -1 for none.
template <int N>
int SelectedOption(ControlArray<OptionButton, N>& options) {
  for (int i = 0; i < N; ++i) {
    if (options(i).Value) return i;
  }
  return -1;
}

}  // namespace marovane

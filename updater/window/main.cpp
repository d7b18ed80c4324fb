// marovane-update-window: shows how far an update has come. Each line of its standard input is a per cent, a
// blank and the step that is going on; it closes when the input ends.
#include <unistd.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QSocketNotifier>
#include <QVBoxLayout>
#include <QWidget>
#include <array>

namespace {

constexpr const char* kTitle = "Marovane 軟體更新";
constexpr const char* kSkin =
    "QWidget { background: #FAF4ED; color: #3A2F26; font-family: 'Noto Sans CJK TC', sans-serif; font-size: "
    "15px; }"
    "QProgressBar { background: #FFFDF9; border: 1px solid #EAD9C6; border-radius: 8px; height: 16px; }"
    "QProgressBar::chunk { background: #C96F38; border-radius: 7px; }";

class UpdateWindow : public QWidget {
 public:
  UpdateWindow() : layout_(this), input_(STDIN_FILENO, QSocketNotifier::Read) {
    constexpr int kWidth = 420;
    constexpr int kMargin = 24;
    setWindowTitle(kTitle);
    setStyleSheet(kSkin);
    setFixedWidth(kWidth);
    layout_.setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout_.addWidget(&step_);
    layout_.addWidget(&bar_);
    bar_.setRange(0, 100);
    bar_.setTextVisible(false);
    bar_.setAccessibleName("更新進度");
    hint_.setText("請不要關閉電腦。關掉這個視窗，更新仍會繼續。");
    hint_.setWordWrap(true);
    layout_.addWidget(&hint_);
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    connect(&input_, &QSocketNotifier::activated, this, [this] { Read(); });
  }

 private:
  void Read() {
    std::array<char, 4096> bytes{};
    const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
      input_.setEnabled(false);
      close();
      return;
    }
    unread_.append(bytes.data(), count);
    for (auto end = unread_.indexOf('\n'); end >= 0; end = unread_.indexOf('\n')) {
      Show(QString::fromUtf8(unread_.left(end)));
      unread_.remove(0, end + 1);
    }
  }

  // Of a window that is minimised the title is all that there is to see.
  void Show(const QString& line) {
    const int percent = line.section(' ', 0, 0).toInt();
    step_.setText(QStringLiteral("%1… %2%").arg(line.section(' ', 1)).arg(percent));
    bar_.setValue(percent);
    setWindowTitle(QStringLiteral("%1 %2%").arg(kTitle).arg(percent));
  }

  QVBoxLayout layout_;
  QLabel step_, hint_;
  QProgressBar bar_;
  QSocketNotifier input_;
  QByteArray unread_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  UpdateWindow window;
  window.show();
  return QApplication::exec();
}

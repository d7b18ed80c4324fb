#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QRegularExpression>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineScript>
#include <QWebEngineView>
#include <deque>

#include "qt/text_convert.h"
#include "qt/web/page.h"
#include "qt/web/profile.h"
#include "qt/web_pane.h"

namespace marovane {

namespace {

constexpr int kAttempts = 3;  // further ones to load a page

// Inputs by id; of options and boxes the mark, of all the value.
const char* const kReadInputs = R"js((function() {
  const found = {values: {}, checked: {}};
  for (const input of document.querySelectorAll('input[id],select[id],textarea[id]')) {
    found.values[input.id] = input.value;
    if (input.type == 'checkbox' || input.type == 'radio') found.checked[input.id] = input.checked;
  }
  return found;
})())js";

// What shows until a page has been drawn: its own ground, so that nothing flashes.
QColor GroundOf(const QString& html) {
  static const QRegularExpression color("background-color: *(#[0-9A-Fa-f]{6})");
  const QRegularExpressionMatch match = color.match(html);
  return match.hasMatch() ? QColor(match.captured(1)) : QColor("#FAF4ED");
}

class Pane : public WebPane {
 public:
  Pane();
  ~Pane() override;
  QWidget* Widget() override { return view_; }
  void Navigate(const QString& url) override;
  void Write(const QString& html) override;
  void SubmitForm(int index) override;
  void SetChecked(const std::map<std::string, bool>& marks) override;
  void GoBack() override { page_->GoThroughHistory(QWebEnginePage::Back); }
  void GoForward() override { page_->GoThroughHistory(QWebEnginePage::Forward); }
  void ReadInputs(std::function<void(const PageInputs&)> callback) override;

 private:
  void Load(const QUrl& url, const WebHeader& proof = {});
  void LoadAgain();
  void Loaded();
  void RunWhenLoaded(const QString& script);

  QPointer<QWebEngineView> view_;
  WebPage* page_;
  std::deque<QUrl> written_;  // pages of this view that may still be in its history
  QStringList waiting_;       // scripts for the page that is being loaded
  bool isLoading_ = false;
  QUrl wanted_;       // what the program asked for last
  int attempts_ = 0;  // further ones, to load it
};

Pane::Pane() : view_(new QWebEngineView), page_(new WebPage(*this, view_)) {
  view_->setPage(page_);
  view_->setContextMenuPolicy(Qt::NoContextMenu);
  page_->setBackgroundColor(QColor("#FAF4ED"));
  QObject::connect(page_, &QWebEnginePage::loadFinished, view_, [this] { Loaded(); });
  QObject::connect(page_, &QWebEnginePage::renderProcessTerminated, view_, [this] { LoadAgain(); });
  QObject::connect(page_, &QWebEnginePage::titleChanged, view_, [this](const QString& title) {
    // A page without a title of its own is reported with its address.
    const bool isAddress = title.startsWith(QString(kWrittenPageScheme) + "://") || title == "about:blank";
    if (events.title && !isAddress) events.title(title);
  });
  QObject::connect(page_, &QWebEnginePage::linkHovered, view_, [this](const QString& url) {
    if (events.statusText) events.statusText(url);
  });
}

Pane::~Pane() {
  for (const QUrl& url : written_) ForgetPage(url);
  delete view_;
}

void Pane::Navigate(const QString& url) {
  Load(QUrl::fromUserInput(QString(url).replace('\\', '/')), rights.proofFor(url));
}

void Pane::Load(const QUrl& url, const WebHeader& proof) {
  waiting_.clear();
  isLoading_ = true;
  attempts_ = 0;
  wanted_ = url;
  page_->LoadQuietly(url, proof);
}

// For a written page whose renderer has died. A load that ends in any other way is left as it is: a script
// that follows a link to the program ends its load as well, and would run twice.
void Pane::LoadAgain() {
  constexpr int kPause = 200;  // milliseconds
  if (wanted_.scheme() != kWrittenPageScheme || attempts_ >= kAttempts) return;
  ++attempts_;
  isLoading_ = true;
  QTimer::singleShot(kPause, view_, [this, url = wanted_] {
    if (isLoading_ && url == wanted_) page_->LoadQuietly(url);
  });
}

void Pane::Write(const QString& html) {
  constexpr std::size_t kKept = 20;  // as far back as somebody is likely to go
  page_->setBackgroundColor(GroundOf(html));
  written_.push_back(KeepPage(html));
  if (written_.size() > kKept) {
    ForgetPage(written_.front());
    written_.pop_front();
  }
  Load(written_.back());
}

void Pane::SubmitForm(int index) { RunWhenLoaded(QString("document.forms[%1].submit()").arg(index)); }

void Pane::SetChecked(const std::map<std::string, bool>& marks) {
  QJsonObject object;
  for (const auto& [id, isChecked] : marks) object[Text(id)] = isChecked;
  RunWhenLoaded(QString("for (const [id, mark] of Object.entries(%1)) {"
                        "  const box = document.getElementById(id);"
                        "  if (box) box.checked = mark;"
                        "}")
                    .arg(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))));
}

void Pane::RunWhenLoaded(const QString& script) {
  if (isLoading_) {
    waiting_ << script;
  } else {
    page_->runJavaScript(script);
  }
}

void Pane::Loaded() {
  isLoading_ = false;
  const QStringList scripts = std::exchange(waiting_, {});
  for (const QString& script : scripts) page_->runJavaScript(script);
  const QString address =
      page_->url().scheme() == kWrittenPageScheme ? "about:blank" : page_->url().toString();
  if (events.documentComplete) events.documentComplete(address);
}

void Pane::ReadInputs(std::function<void(const PageInputs&)> callback) {
  if (page_->url().scheme() != kWrittenPageScheme) return callback({});
  page_->runJavaScript(kReadInputs, QWebEngineScript::ApplicationWorld, [callback](const QVariant& answer) {
    PageInputs inputs;
    const QVariantMap found = answer.toMap();
    const QVariantMap values = found["values"].toMap();
    const QVariantMap checked = found["checked"].toMap();
    for (auto it = values.begin(); it != values.end(); ++it) {
      inputs.values[Utf8(it.key())] = Utf8(it.value().toString());
    }
    for (auto it = checked.begin(); it != checked.end(); ++it) {
      inputs.checked[Utf8(it.key())] = it.value().toBool();
    }
    callback(inputs);
  });
}

}  // namespace

extern "C" Q_DECL_EXPORT WebPane* MakeMarovaneWebPane() { return new Pane; }

}  // namespace marovane

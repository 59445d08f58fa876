#include "ui/run_dialog.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <new>

#include "settings/twips.h"
#include "ui/explain.h"
#include "ui/later.h"
#include "ui/named.h"
#include "ui/qt_text.h"

namespace ledrix {
namespace {

constexpr int kBarWidth = static_cast<int>(kProgressWidth) / kTwipsPerPixel;

double SecondsSince(const timespec& then) {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec - then.tv_sec) +
         static_cast<double>(now.tv_nsec - then.tv_nsec) / 1e9;
}

}  // namespace

// What a job tells beside the bar. Takes the width that a text needs, and never less again.
class LedrixF1::BarLabel : public QLabel {
 public:
  BarLabel() {
    setTextFormat(Qt::PlainText);
    setText(kLongText);
    setMinimumWidth(sizeHint().width());
    clear();
  }

  void Show(const QString& told) {
    const int most = screen()->availableSize().width() - kBarWidth - 100;
    const QString shown =
        fontMetrics().elidedText(told, Qt::ElideMiddle, std::max(most, minimumWidth()));
    if (text() == shown) return;
    setText(shown);
    setMinimumWidth(std::max(minimumWidth(), sizeHint().width()));
  }

 private:
  static constexpr const char* kLongText = "ISO-2022-JP-2004 変換中 ･･･ 100%";  // as they come
};

// Breaks lines anywhere: a path has no blanks.
class LedrixF1::MessageLabel : public QLabel {
 public:
  explicit MessageLabel(int width) {
    setMinimumSize(width, kFewestLines * fontMetrics().lineSpacing());
  }

  // Takes the height that a text needs, and never less again.
  void Show(const QString& shown) {
    if (text() == shown) return;
    setText(shown);
    const int height = fontMetrics().boundingRect(0, 0, minimumWidth(), 0, kFlags, shown).height();
    setMinimumHeight(std::max(minimumHeight(), height));
  }
  QSize sizeHint() const override { return minimumSize(); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter(this).drawText(rect(), kFlags, text());
  }

 private:
  static constexpr int kFewestLines = 3;
  static constexpr int kFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWrapAnywhere;
};

LedrixF1::LedrixF1(OptionRecord& options, JobRecord& job, WindowPlatform& platform,
                   const JobSurroundings& surroundings, const ResultSink& results, QWidget* parent)
    : QDialog(parent),
      options_(options),
      job_(job),
      platform_(platform),
      surroundings_(surroundings),
      results_(results),
      services_(options, job, platform, *this),
      LblBar(Named(new BarLabel, "LblBar")),
      bar_frame_(new QFrame),
      PicStsValue(Named(new QWidget(bar_frame_), "PicStsValue")),
      LblMSG(Named(new MessageLabel(WidthOfContents()), "LblMSG")),
      BtnYES(Named(new QPushButton("はい"), "BtnYES")),
      BtnNO(Named(new QPushButton("いいえ"), "BtnNO")),
      BtnStop(Named(new QPushButton("中止"), "BtnStop")) {
  Build();
  caption_ = JobCaption(job_.request);
  message_ = JobMessage(options_, job_);
  ShowState(!IsOn(options_.StartMsg));
  ShowWhatWasTold();
  platform_.OnYield([this] { ShowWhatWasTold(); });
}

LedrixF1::~LedrixF1() {
  platform_.OnYield(nullptr);
  platform_.AcceptInput(true);
  FlushResults();
}

// Both states are as wide as the bar with a text beside it, and the title with the window's
// buttons.
int LedrixF1::WidthOfContents() const {
  const QString count = QString("  %1 / %1").arg(job_.request.FileCount);
  const int title = fontMetrics().horizontalAdvance(ToQString(JobCaption(job_.request)) + count) +
                    10 * fontMetrics().height();
  const int bar =
      kBarWidth + style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing) + LblBar->minimumWidth();
  return std::max(title, bar);
}

void LedrixF1::Build() {
  Named(this, "LedrixF1");
  LblMSG->setTextFormat(Qt::PlainText);
  bar_frame_->setFrameShape(QFrame::StyledPanel);
  bar_frame_->setAutoFillBackground(true);
  bar_frame_->setBackgroundRole(QPalette::Base);  // seen while it is empty
  bar_frame_->setFixedSize(kBarWidth, fontMetrics().height());
  PicStsValue->setAutoFillBackground(true);
  PicStsValue->setBackgroundRole(QPalette::Highlight);
  PicStsValue->resize(bar_frame_->size());
  connect(BtnYES, &QPushButton::clicked, this, [this] { Run(); });
  connect(BtnNO, &QPushButton::clicked, this, [this] {
    job_.StopRequested = true;
    Leave();
  });
  for (QPushButton* const button : {BtnYES, BtnNO}) {
    auto* const key = new QShortcut(Qt::ALT | (button == BtnYES ? Qt::Key_Y : Qt::Key_N), this);
    connect(key, &QShortcut::activated, button, [button] {
      if (button->isVisible()) button->click();
    });
  }
  connect(BtnStop, &QPushButton::clicked, this, [this] { AskToStop(MessageAnswer::kNo); });

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  for (QPushButton* const button : {BtnYES, BtnNO, BtnStop}) {
    button->setAutoDefault(true);
    buttons->addWidget(button);
  }
  buttons->addStretch();
  auto* const bar = new QHBoxLayout;
  bar->addWidget(bar_frame_);
  bar->addWidget(LblBar, 1);
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(LblMSG, 1);
  rows->addLayout(bar);
  rows->addLayout(buttons);
  Explain(*this);
}

void LedrixF1::ShowState(bool running) {
  bar_frame_->setVisible(running);
  LblBar->setVisible(running);
  BtnStop->setVisible(running);
  BtnYES->setVisible(!running);
  BtnNO->setVisible(!running);
  (running ? BtnStop : BtnYES)->setDefault(true);
  (running ? BtnStop : BtnYES)->setFocus();
}

void LedrixF1::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (std::exchange(started_, true) || IsOn(options_.StartMsg)) return;
  // From the event loop, so that the dialog is there before its job runs.
  DoLater(*this, [this] {
    repaint();
    Run();
  });
}

void LedrixF1::Run() {
  if (running_ || done_ || job_.StopRequested) return;
  running_ = true;
  try {
    RunJob(services_, surroundings_);
  } catch (const std::bad_alloc&) {
    // A line may be as long as its file.
    JobEnded();
    platform_.ShowMessage({"メモリが足りません"});
  }
  running_ = false;
  done_ = true;
  ShowWhatWasTold();
  Leave();
}

void LedrixF1::JobStarted() {
  ShowState(true);
  QGuiApplication::setOverrideCursor(Qt::BusyCursor);
}

void LedrixF1::JobEnded() {
  QGuiApplication::restoreOverrideCursor();
}

void LedrixF1::AskToStop(MessageAnswer default_answer) {
  if (asking_ || job_.StopRequested || done_) return;
  asking_ = true;
  const MessageAnswer answer =
      platform_.ShowMessage({"処理を中断します  よろしいですか？", kProgramTitle,
                             MessageIcon::kQuestion, MessageButtons::kYesNo, default_answer});
  asking_ = false;
  if (answer != MessageAnswer::kYes) return;
  job_.StopRequested = true;
  Leave();
}

void LedrixF1::Leave() {
  // The job that still runs below gets no mouse and no keys: they are for what comes after it.
  platform_.AcceptInput(!running_);
  done(0);
}

void LedrixF1::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (BtnStop->isVisible() && !done_ && !job_.StopRequested) {
    AskToStop(MessageAnswer::kYes);
  } else {
    Leave();
  }
}

void LedrixF1::ClearResults() {
  waiting_results_.clear();
  results_.clear();
}

void LedrixF1::PairStarted(size_t number, size_t count) {
  caption_ =
      JobCaption(job_.request) + "  " + std::to_string(number) + " / " + std::to_string(count);
}

void LedrixF1::ShowWhatWasTold() {
  setWindowTitle(ToQString(caption_));
  LblMSG->Show(ToShownLines(message_));
  LblBar->Show(ToQString(bar_text_));
  PicStsValue->move(static_cast<int>(left_ / kTwipsPerPixel), 0);
  // A list of very many results must not cost more than the job.
  constexpr double kPatience = 10;
  if (SecondsSince(last_flush_) >= kPatience * flush_seconds_) FlushResults();
}

void LedrixF1::FlushResults() {
  if (waiting_results_.empty()) return;
  clock_gettime(CLOCK_MONOTONIC, &last_flush_);
  results_.add(std::exchange(waiting_results_, {}));
  flush_seconds_ = SecondsSince(last_flush_);
}

}  // namespace ledrix

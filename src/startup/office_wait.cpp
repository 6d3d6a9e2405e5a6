#include "office_wait.h"

#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QProgressBar>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "office.h"

namespace qv {

namespace {

// One thread for all office calls, so that the office sees one caller as before. It
// is never joined: a call stuck in a frozen office must not hold up the end.
class Worker {
 public:
  static Worker& Get() {
    static auto* worker = new Worker;
    return *worker;
  }
  void post(std::function<void()> job) {
    {
      std::lock_guard<std::mutex> l(m_);
      jobs_.push_back(std::move(job));
    }
    cv_.notify_one();
  }

 private:
  Worker() { std::thread([this] { run(); }).detach(); }
  void run() {
    for (;;) {
      std::function<void()> job;
      {
        std::unique_lock<std::mutex> l(m_);
        cv_.wait(l, [this] { return !jobs_.empty(); });
        job = std::move(jobs_.front());
        jobs_.pop_front();
      }
      job();
    }
  }
  std::mutex m_;
  std::condition_variable cv_;
  std::deque<std::function<void()>> jobs_;
};

[[noreturn]] void EndWithoutTheOffice() {
  std::fprintf(stderr, "Quantavue: the spreadsheet does not answer; Quantavue ends.\n");
  std::fflush(nullptr);
  _exit(1);  // the worker may be stuck inside the office: no teardown waits for it
}

// While a call is out: a close request is held until the call is back (then sent
// again), and a close that the office keeps waiting ends the process.
class CloseKeeper : public QObject {
 public:
  int depth = 0;
  QPointer<QWidget> closeAsked;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (depth == 0 || event->type() != QEvent::Close) return false;
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w || !w->isWindow() || qobject_cast<QMessageBox*>(w)) return false;
    closeAsked = w;
    event->ignore();
    return true;
  }
};

CloseKeeper* Keeper() {
  static CloseKeeper* keeper = nullptr;
  if (!keeper) {
    keeper = new CloseKeeper;
    qApp->installEventFilter(keeper);
  }
  return keeper;
}

// A small panel over the window in front that counts the cells of a long bulk read or
// write. It takes no focus and no input, so it changes nothing the user does.
class ProgressPanel : public QFrame {
 public:
  ProgressPanel()
      : QFrame(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                            Qt::WindowDoesNotAcceptFocus) {
    setObjectName(QStringLiteral("OfficeProgress"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 10, 14, 12);
    label_ = new QLabel(this);
    label_->setObjectName(QStringLiteral("OfficeProgressText"));
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("OfficeProgressBar"));
    bar_->setRange(0, 1000);  // permille: a sheet holds more cells than an int counts
    bar_->setTextVisible(false);
    layout->addWidget(label_);
    layout->addWidget(bar_);
    setFixedWidth(380);
  }

  void report(const OfficeProgress& p) {
    QLocale locale;
    label_->setText(QStringLiteral("%1 cells: %2 of %3")
                        .arg(p.work == OfficeProgress::Work::Reading ? QStringLiteral("Reading")
                                                                     : QStringLiteral("Writing"),
                             locale.toString(static_cast<qlonglong>(p.done)),
                             locale.toString(static_cast<qlonglong>(p.total))));
    bar_->setValue(static_cast<int>(p.done * 1000 / p.total));
    if (isVisible()) return;
    adjustSize();
    QWidget* over = QApplication::activeWindow();
    if (!over) {
      for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w != this) {
          over = w;
          break;
        }
    }
    QRect area = over ? over->frameGeometry() : screen()->availableGeometry();
    move(area.center() - rect().center());
    QFrame::show();
  }

 private:
  QLabel* label_;
  QProgressBar* bar_;
};

// True when the user chooses to end; the box goes by itself when the answer comes.
bool AskToEnd(const std::atomic<bool>& done) {
  QMessageBox box(QMessageBox::Warning, QApplication::applicationName(),
                  QStringLiteral("The spreadsheet does not answer."), QMessageBox::NoButton);
  box.setInformativeText(QStringLiteral("Close Quantavue now, or wait for the spreadsheet?"));
  QPushButton* end = box.addButton(QStringLiteral("Close Quantavue"), QMessageBox::AcceptRole);
  QPushButton* wait = box.addButton(QStringLiteral("Wait"), QMessageBox::RejectRole);
  box.setDefaultButton(end);
  box.setEscapeButton(wait);
  box.setWindowModality(Qt::ApplicationModal);
  box.setWindowFlag(Qt::WindowStaysOnTopHint, true);
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, &box, [&] {
    if (done.load()) box.done(QDialog::Rejected);
  });
  poll.start(100);
  box.exec();
  return !done.load() && box.clickedButton() == end;
}

void WaitFor(const std::function<void()>& call, std::chrono::milliseconds limit,
             std::chrono::milliseconds progressAfter) {
  using Clock = std::chrono::steady_clock;
  CloseKeeper* keeper = Keeper();
  auto done = std::make_shared<std::atomic<bool>>(false);
  Worker::Get().post([&call, done] {
    call();
    done->store(true);
    // Wakes the waiting loop below.
    if (QCoreApplication* app = QCoreApplication::instance())
      QMetaObject::invokeMethod(app, [] {}, Qt::QueuedConnection);
  });
  ++keeper->depth;
  QTimer tick;  // wakes the loop to look at the clock
  tick.start(100);
  Clock::time_point since = Clock::now();
  const Clock::time_point started = since;
  Clock::time_point closeDeadline{};
  std::unique_ptr<ProgressPanel> panel;
  while (!done->load()) {
    // Input is held back, not lost: it arrives in order once the call is back.
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::ExcludeUserInputEvents);
    if (done->load()) break;
    Clock::time_point now = Clock::now();
    if (keeper->closeAsked) {
      // A close always works: give the call a moment to finish its work, then go.
      if (closeDeadline == Clock::time_point{}) closeDeadline = now + std::chrono::seconds(2);
      if (now >= closeDeadline) EndWithoutTheOffice();
      continue;
    }
    if (now - since >= limit) {
      if (panel) panel->hide();
      if (AskToEnd(*done)) EndWithoutTheOffice();
      since = Clock::now();
    }
    // Short calls show nothing: a panel that flashes would only distract.
    OfficeProgress progress = CurrentOfficeProgress();
    if (progress.total > 0 && now - started >= progressAfter) {
      if (!panel) panel = std::make_unique<ProgressPanel>();
      panel->report(progress);
    }
  }
  if (--keeper->depth == 0 && keeper->closeAsked) {
    QPointer<QWidget> w = keeper->closeAsked;
    keeper->closeAsked = nullptr;
    QTimer::singleShot(0, w, [w] {
      if (w) w->close();
    });
  }
}

}  // namespace

void InstallOfficeWaiter(std::chrono::milliseconds noAnswerLimit, std::chrono::milliseconds progressAfter) {
  Keeper();
  SetOfficeCallWaiter([=](const std::function<void()>& call) { WaitFor(call, noAnswerLimit, progressAfter); });
}

void RemoveOfficeWaiter() { SetOfficeCallWaiter(nullptr); }

}  // namespace qv

#include "scripted_run.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace qv {

namespace {

int EnvMs(const char* name) {
  bool ok = false;
  int ms = qEnvironmentVariableIntValue(name, &ok);
  return ok && ms >= 0 ? ms : -1;
}

class AutoAnswer : public QObject {
 public:
  explicit AutoAnswer(int ms) : ms_(ms) {}
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show) return false;
    auto* box = qobject_cast<QMessageBox*>(watched);
    if (!box || box->property("qvAnswering").toBool()) return false;
    box->setProperty("qvAnswering", true);
    std::fprintf(stderr, "Quantavue message: %s\n", qPrintable(box->text()));
    std::fflush(stderr);
    QPointer<QMessageBox> b(box);
    QTimer::singleShot(ms_, box, [b] {
      if (!b) return;
      QAbstractButton* answer = b->defaultButton();
      for (QAbstractButton* candidate : b->buttons()) {
        if (answer) break;
        QMessageBox::ButtonRole role = b->buttonRole(candidate);
        if (role == QMessageBox::AcceptRole || role == QMessageBox::YesRole) answer = candidate;
      }
      if (!answer && !b->buttons().isEmpty()) answer = b->buttons().front();
      if (answer)
        answer->click();
      else
        b->close();
    });
    return false;
  }

 private:
  int ms_;
};

}  // namespace

void InstallAutoAnswer() {
  int ms = EnvMs("QUANTAVUE_AUTO_ANSWER");
  if (ms >= 0) qApp->installEventFilter(new AutoAnswer(ms));
}

void ArmMainWindowHooks(QWidget* form) {
  int closeAfter = EnvMs("QUANTAVUE_CLOSE_AFTER");
  if (closeAfter >= 0) {
    QPointer<QWidget> f(form);
    QTimer::singleShot(closeAfter, form, [f] {
      if (!f) return;
      std::fprintf(stderr, "Quantavue: closing the main window (%s)\n", f->isVisible() ? "shown" : "hidden");
      std::fflush(stderr);
      f->close();
    });
  }
  // For a demo without a screen: save a picture of the window and end.
  QString shot = qEnvironmentVariable("QUANTAVUE_SCREENSHOT");
  if (!shot.isEmpty()) {
    QTimer::singleShot(1500, form, [form, shot] {
      form->grab().save(shot);
      form->close();
    });
  }
}

}  // namespace qv

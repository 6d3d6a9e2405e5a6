// The entry: three switches serve the About window, the help index and the contact
// page; anything else attaches to the running spreadsheet and opens the main window.
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QUrl>

#include "analysis_state.h"
#include "main_form.h"

namespace qv {

namespace {

QString DocsPage(const QString& name) {
  // Until the product has a site, its pages ship beside the program.
  QDir dir(QCoreApplication::applicationDirPath());
  for (const char* rel : {"docs", "../docs", "../../docs", "../share/quantavue/docs"})
    if (dir.exists(QString::fromLatin1(rel) + "/" + name))
      return dir.absoluteFilePath(QString::fromLatin1(rel) + "/" + name);
  return dir.absoluteFilePath("docs/" + name);
}

void OpenWebPage(const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }

void Warn(const QString& text) {
  QMessageBox::warning(nullptr, QStringLiteral("Quantavue"), text, QMessageBox::Ok);
}

// Attaches to the running spreadsheet and shows MainForm; false when there is none.
bool AttachToExcel() {
  AnalysisState& s = State();
  try {
    s.ExcelApp = Office::Attach(Office::DefaultConnection());
  } catch (const NoOfficeError&) {
    Warn(QStringLiteral("No running Excel instance found"));
    return false;
  } catch (const OfficeError& e) {
    Warn(QString::fromStdString(e.what()));
    return false;
  }
  try {
    s.ActiveBook = s.ExcelApp->activeWorkbook();
  } catch (const OfficeError&) {
    s.ActiveBook.reset();
  }
  if (!s.ActiveBook) {
    Warn(QStringLiteral("An Excel instance found but no Activeworkbook"));
    return false;
  }
  auto* form = new MainForm;
  form->setAttribute(Qt::WA_DeleteOnClose);
  form->show();
  form->Form_Load();
  // For a demo without a screen: save a picture of the window and end.
  QString shot = qEnvironmentVariable("QUANTAVUE_SCREENSHOT");
  if (!shot.isEmpty()) {
    QTimer::singleShot(1500, form, [form, shot] {
      form->grab().save(shot);
      form->close();
    });
  }
  return true;
}

}  // namespace

}  // namespace qv

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Quantavue"));
  // The command line is compared as one string, exactly: "/612 " is no switch.
  QStringList args = QCoreApplication::arguments();
  args.removeFirst();
  QString line = args.join(QChar(' '));
  if (line == QStringLiteral("/612")) {
    QMessageBox about(QMessageBox::Information, QStringLiteral("About Quantavue"),
                      QStringLiteral("Quantavue %1\nOne variable of a spreadsheet, at a glance.")
                          .arg(QStringLiteral(QUANTAVUE_VERSION)));
    about.setModal(false);
    about.show();
    return app.exec();
  }
  if (line == QStringLiteral("/1003")) {
    qv::OpenWebPage(qv::DocsPage(QStringLiteral("help.html")));
    return 0;
  }
  if (line == QStringLiteral("/613")) {
    qv::OpenWebPage(qv::DocsPage(QStringLiteral("contact.html")));
    return 0;
  }
  if (!qv::AttachToExcel()) return 0;
  int rc = app.exec();
  // Release the office while its runtime is still there, not in the static teardown.
  qv::AnalysisState& s = qv::State();
  s.LastRead.reset();
  s.ActiveBook.reset();
  s.ExcelApp.reset();
  return rc;
}

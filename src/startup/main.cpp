// The entry: three switches serve the About window, the help index and the contact
// page; anything else attaches to the running spreadsheet and opens the main window.
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPluginLoader>
#include <QPointer>
#include <QUrl>

#include <clocale>
#include <cstdio>

#include "about_window.h"
#include "analysis_state.h"
#include "main_form.h"
#include "office_setup.h"
#include "office_wait.h"
#include "scripted_run.h"

namespace qv {

namespace {

QString DocsPage(const QString& name) {
  // Until the product has a site, its pages ship beside the program; a program run
  // from its build tree finds them in the source tree.
  QDir dir(QCoreApplication::applicationDirPath());
  for (const char* rel : {"docs", "../share/quantavue/docs", "../docs", "../../docs"})
    if (dir.exists(QString::fromLatin1(rel) + "/" + name))
      return dir.absoluteFilePath(QString::fromLatin1(rel) + "/" + name);
  QDir source(QStringLiteral(QUANTAVUE_SOURCE_DOCS));
  if (source.exists(name)) return source.absoluteFilePath(name);
  return dir.absoluteFilePath("docs/" + name);
}

void OpenWebPage(const QString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(path)); }

void Warn(const QString& text) {
  QMessageBox::warning(nullptr, QStringLiteral("Quantavue"), text, QMessageBox::Ok);
}

// The keys of the display plugins Qt can load, e.g. "xcb", "offscreen".
QStringList DisplayPlugins() {
  QStringList dirs{QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms"};
  for (const QString& d : qEnvironmentVariable("QT_PLUGIN_PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts))
    dirs << d + "/platforms";
  if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM_PLUGIN_PATH")) dirs << qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH");
  QStringList keys;
  for (const QString& d : dirs) {
    QDir dir(d);
    for (const QString& file : dir.entryList(QDir::Files)) {
      QJsonObject meta = QPluginLoader(dir.absoluteFilePath(file)).metaData().value("MetaData").toObject();
      for (const QJsonValue& k : meta.value("Keys").toArray()) keys << k.toString().toLower();
    }
  }
  keys.removeDuplicates();
  return keys;
}

// Qt aborts with a core dump when it cannot load its display plugin: look first, and
// say plainly what is missing.
bool DisplayUsable(int argc, char** argv) {
  QString requested;
  for (int i = 1; i < argc; ++i) {
    QByteArray a(argv[i]);
    if ((a == "-platform" || a == "--platform") && i + 1 < argc) requested = QString::fromLocal8Bit(argv[i + 1]);
  }
  if (requested.isEmpty()) requested = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (requested.isEmpty()) {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
      std::fprintf(stderr,
                   "Quantavue needs a graphical display, and none is set (DISPLAY or WAYLAND_DISPLAY).\n"
                   "Run it inside a desktop session, or choose a platform with QT_QPA_PLATFORM.\n");
      return false;
    }
    return true;
  }
  QStringList available = DisplayPlugins();
  // "wayland;xcb" names fallbacks; "offscreen:opts" carries options.
  for (const QString& choice : requested.split(QChar(';'), Qt::SkipEmptyParts)) {
    QString key = choice.section(QChar(':'), 0, 0).trimmed().toLower();
    if (!available.contains(key)) continue;
    if (key == QStringLiteral("xcb") && qEnvironmentVariableIsEmpty("DISPLAY")) continue;  // no X server named
    return true;
  }
  std::fprintf(stderr, "Quantavue cannot use the display platform \"%s\". Available: %s (xcb only with DISPLAY set).\n",
               qPrintable(requested),
               qPrintable(available.join(QStringLiteral(", "))));
  return false;
}

// Attaches to the running spreadsheet and shows MainForm; null when there is none.
MainForm* AttachToExcel() {
  AnalysisState& s = State();
  try {
    s.ExcelApp = Office::Attach(Office::DefaultConnection());
  } catch (const NoOfficeError&) {
    Warn(QStringLiteral("No running Excel instance found"));
    return nullptr;
  } catch (const OfficeError& e) {
    Warn(QString::fromStdString(e.what()));
    return nullptr;
  }
  try {
    s.ActiveBook = s.ExcelApp->activeWorkbook();
  } catch (const OfficeError&) {
    s.ActiveBook.reset();
  }
  if (!s.ActiveBook) {
    Warn(QStringLiteral("An Excel instance found but no Activeworkbook"));
    return nullptr;
  }
  auto* form = new MainForm;
  form->setAttribute(Qt::WA_DeleteOnClose);
  // Window flags first: changing them on a shown window hides it.
  form->setWindowFlag(Qt::WindowStaysOnTopHint, true);
  form->show();
  ArmMainWindowHooks(form);
  form->Form_Load();
  return form;
}

// The office is let go while its runtime is still there, on every way out, never in
// the static teardown.
void ReleaseOffice() {
  AnalysisState& s = State();
  s.LastRead.reset();
  s.InputRange.reset();
  s.ActiveBook.reset();
  s.ExcelApp.reset();
}

}  // namespace

}  // namespace qv

int main(int argc, char** argv) {
  // The office's one-time set-up is a terminal chore: no window, no display.
  if (qv::IsOfficeSetupCommand(argc, argv)) return qv::RunOfficeSetup(argc, argv);
  if (!qv::DisplayUsable(argc, argv)) return 1;
  QApplication app(argc, argv);
  // Qt takes the C locale from the environment; our number texts and Val read and write
  // the point themselves and need the C library's numbers in the "C" form.
  std::setlocale(LC_NUMERIC, "C");
  QApplication::setApplicationName(QStringLiteral("Quantavue"));
  qv::InstallAutoAnswer();
  // The command line is compared as one string, exactly: "/612 " is no switch.
  QStringList args = QCoreApplication::arguments();
  args.removeFirst();
  QString line = args.join(QChar(' '));
  if (line == QStringLiteral("/612")) {
    // The process ends when this, its only window, closes.
    auto* about = new qv::About(QUrl::fromLocalFile(qv::DocsPage(QStringLiteral("contact.html"))));
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->show();
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
  qv::InstallOfficeWaiter();
  QPointer<qv::MainForm> form = qv::AttachToExcel();
  int rc = 0;
  // The process lives while its window does. A window closed during the load (a
  // picture selected, error cells) closed before the event loop ran: nothing would
  // end the loop then.
  if (form && form->isVisible()) rc = app.exec();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  delete form.data();
  qv::ReleaseOffice();
  qv::RemoveOfficeWaiter();
  return rc;
}

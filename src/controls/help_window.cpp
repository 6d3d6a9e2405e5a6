#include "help_window.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPointer>
#include <QTextBrowser>
#include <QTextDocument>

#include "titel_bar.h"

namespace qv {
namespace {

constexpr int kWidth = 560;
constexpr int kHeight = 480;
// The pane starts below the title bar and the topic's heading.
constexpr int kPaneTop = 60;
constexpr double kOpacity = 0.97;

QString& FolderOverride() {
  static QString folder;
  return folder;
}

QPointer<HelpMsg>& Instance() {
  static QPointer<HelpMsg> instance;
  return instance;
}

// HTML as the topics are written: a tag near the start. Anything else is shown as text.
bool LooksLikeHtml(const QString& text) {
  const QString head = text.left(4096).trimmed().toLower();
  return head.startsWith(QLatin1String("<!doctype html")) || head.startsWith(QLatin1String("<html")) ||
         Qt::mightBeRichText(head);
}

}  // namespace

HelpMsg::HelpMsg(QWidget* owner) : QDialog(owner) {
  setObjectName(QStringLiteral("HelpMsg"));
  setWindowTitle(QStringLiteral("Quantavue"));
  setWindowFlag(Qt::WindowStaysOnTopHint, true);
  setWindowModality(Qt::ApplicationModal);
  setWindowOpacity(kOpacity);
  setFixedSize(kWidth, kHeight);
  m_bar = TitelBar::Install(this, false);
  m_heading = new QLabel(this);
  m_heading->setObjectName(QStringLiteral("TopicHeading"));
  m_heading->setGeometry(12, TitelBar::kHeight + 2, kWidth - 24, kPaneTop - TitelBar::kHeight - 4);
  QFont bold = m_heading->font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * 1.2);
  m_heading->setFont(bold);
  m_pane = new QTextBrowser(this);
  m_pane->setObjectName(QStringLiteral("HelpPane"));
  m_pane->setGeometry(0, kPaneTop, kWidth, kHeight - kPaneTop);
  m_pane->setOpenExternalLinks(true);
  m_pane->setFrameShape(QFrame::Box);
  m_pane->document()->setDocumentMargin(10);
}

QString HelpMsg::TopicFile(int topic) {
  switch (topic) {
    case 1: return QStringLiteral("NumberOfBins.html");
    case 2: return QStringLiteral("ExplicitBinning.html");
    case 3: return QStringLiteral("IntervalBinning.html");
    case 4: return QStringLiteral("Discrete.html");
    case 5: return QStringLiteral("Truncation.html");
    case 6: return QStringLiteral("Cumulative.html");
    case 8: return QStringLiteral("Formatting.html");
    default: return {};
  }
}

QString HelpMsg::helpFolder() {
  if (!FolderOverride().isEmpty()) return FolderOverride();
  // Beside the program in a build tree; in share/quantavue when installed.
  const QDir dir(QCoreApplication::applicationDirPath());
  const QString installed = dir.filePath(QStringLiteral("../share/quantavue/HelpMessages"));
  if (!dir.exists(QStringLiteral("HelpMessages")) && QDir(installed).exists()) return QDir::cleanPath(installed);
  return dir.filePath(QStringLiteral("HelpMessages"));
}

void HelpMsg::setHelpFolder(const QString& folder) { FolderOverride() = folder; }

HelpMsg* HelpMsg::ShowTopic(int topic, QWidget* owner) {
  QWidget* top = owner ? owner->window() : nullptr;
  QPointer<HelpMsg>& instance = Instance();
  if (instance && instance->parentWidget() != top) delete instance.data();
  if (!instance) instance = new HelpMsg(top);
  instance->LoadTopic(topic);
  instance->show();
  instance->activateWindow();
  return instance;
}

HelpMsg* HelpMsg::current() { return Instance(); }

void HelpMsg::showNotice(const QString& text) {
  m_notice = text;
  m_heading->clear();
  m_pane->setPlainText(text);
}

void HelpMsg::LoadTopic(int topic) {
  m_topic = topic;
  m_notice.clear();
  const QString name = TopicFile(topic);
  if (name.isEmpty()) {
    showNotice(tr("There is no help topic %1.").arg(topic));
    return;
  }
  QFile file(QDir(helpFolder()).filePath(name));
  if (!file.open(QIODevice::ReadOnly)) {
    showNotice(tr("The help topic %1 could not be found beside the program.").arg(name));
    return;
  }
  const QByteArray bytes = file.read(kMaxTopicBytes);
  const bool cut = !file.atEnd();
  if (bytes.trimmed().isEmpty()) {
    showNotice(tr("The help topic %1 is empty.").arg(name));
    return;
  }
  const QString text = QString::fromUtf8(bytes);
  m_pane->setSearchPaths({helpFolder()});
  if (LooksLikeHtml(text)) {
    m_pane->setHtml(text);
  } else {
    m_pane->setPlainText(text);
  }
  QString title = m_pane->documentTitle();
  m_heading->setText(title);
  if (cut) {
    m_notice = tr("Only the first %1 kB of this topic are shown.").arg(kMaxTopicBytes / 1024);
    m_pane->append(QStringLiteral("\n") + m_notice);
  }
  m_pane->moveCursor(QTextCursor::Start);
}

}  // namespace qv

// HelpMsg: the help text window of the "?" buttons. One topic in a read-and-scroll pane,
// under the program's title bar, on top of the other windows and modal while it is up.
#pragma once

#include <QDialog>
#include <QString>

class QLabel;
class QTextBrowser;

namespace qv {

class TitelBar;

class HelpMsg : public QDialog {
  Q_OBJECT

 public:
  // Topics are cut here: a larger file shows its beginning and a line that says so.
  static constexpr qint64 kMaxTopicBytes = 1 << 20;

  explicit HelpMsg(QWidget* owner = nullptr);

  // The file of a help topic (1 to 6 and 8), "" for a number that has none.
  static QString TopicFile(int topic);
  // The folder the topics are read from: HelpMessages beside the program, unless set.
  static QString helpFolder();
  static void setHelpFolder(const QString& folder);

  // Shows the topic over `owner`, modal and on top, made on first use and read anew at
  // every call. Returns at once: the window blocks input to the others until closed.
  static HelpMsg* ShowTopic(int topic, QWidget* owner);
  // The window of the last ShowTopic, if it is still there.
  static HelpMsg* current();

  // Reads the topic into the pane. A missing, empty or unreadable file, or an unknown
  // number, gives a one-line notice instead; a text that is no HTML shows as plain text.
  void LoadTopic(int topic);
  int topic() const { return m_topic; }
  // The notice on show, "" when the topic's text is shown.
  QString notice() const { return m_notice; }
  QTextBrowser* pane() const { return m_pane; }
  TitelBar* titelBar() const { return m_bar; }

 private:
  void showNotice(const QString& text);

  TitelBar* m_bar;
  QLabel* m_heading;
  QTextBrowser* m_pane;
  int m_topic = 0;
  QString m_notice;
};

}  // namespace qv

// A one-column list of values, each row with a tick box, a key and a text.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

class QTreeWidget;

namespace qv {

// Ticks change only the list: reading them is up to the window, when it applies them.
class CheckList : public QWidget {
  Q_OBJECT

 public:
  explicit CheckList(QWidget* parent = nullptr, const QString& columnTitle = QStringLiteral("Variable"));

  void clear();
  // Appends an unticked row. A non-empty key must be unique: a second row with the same key
  // is refused and false returned.
  bool addItem(const QString& key, const QString& text);

  int count() const;
  QString key(int i) const;
  QString text(int i) const;
  // The row with this key, or -1.
  int indexOfKey(const QString& key) const;

  bool isChecked(int i) const;
  void setChecked(int i, bool checked);
  void setAllChecked(bool checked);
  // The texts of the ticked rows, in list order.
  QStringList checkedTexts() const;

  // The view inside, for tests and the look of a window.
  QTreeWidget* view() const { return m_view; }

 private:
  QTreeWidget* m_view;
};

}  // namespace qv

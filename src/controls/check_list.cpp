#include "check_list.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace qv {
namespace {
constexpr int kKeyRole = Qt::UserRole;
}

CheckList::CheckList(QWidget* parent, const QString& columnTitle) : QWidget(parent), m_view(new QTreeWidget(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_view);
  m_view->setColumnCount(1);
  m_view->setHeaderLabels({columnTitle});
  m_view->setRootIsDecorated(false);
  m_view->setUniformRowHeights(true);
  m_view->setSelectionMode(QAbstractItemView::SingleSelection);
  m_view->header()->setStretchLastSection(true);
  setFocusProxy(m_view);
}

void CheckList::clear() { m_view->clear(); }

bool CheckList::addItem(const QString& key, const QString& text) {
  if (!key.isEmpty() && indexOfKey(key) >= 0) return false;
  auto* item = new QTreeWidgetItem(m_view, {text});
  item->setData(0, kKeyRole, key);
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
  item->setCheckState(0, Qt::Unchecked);
  return true;
}

int CheckList::count() const { return m_view->topLevelItemCount(); }

QString CheckList::key(int i) const {
  const QTreeWidgetItem* item = m_view->topLevelItem(i);
  return item ? item->data(0, kKeyRole).toString() : QString();
}

QString CheckList::text(int i) const {
  const QTreeWidgetItem* item = m_view->topLevelItem(i);
  return item ? item->text(0) : QString();
}

int CheckList::indexOfKey(const QString& key) const {
  for (int i = 0; i < count(); ++i)
    if (m_view->topLevelItem(i)->data(0, kKeyRole).toString() == key) return i;
  return -1;
}

bool CheckList::isChecked(int i) const {
  const QTreeWidgetItem* item = m_view->topLevelItem(i);
  return item && item->checkState(0) == Qt::Checked;
}

void CheckList::setChecked(int i, bool checked) {
  if (QTreeWidgetItem* item = m_view->topLevelItem(i)) item->setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
}

void CheckList::setAllChecked(bool checked) {
  for (int i = 0; i < count(); ++i) setChecked(i, checked);
}

QStringList CheckList::checkedTexts() const {
  QStringList texts;
  for (int i = 0; i < count(); ++i)
    if (isChecked(i)) texts.append(text(i));
  return texts;
}

}  // namespace qv

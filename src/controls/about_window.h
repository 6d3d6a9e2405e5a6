// About: the product's name, a logo and a button to the maker's page, under the program's
// title bar and with its shadow. Shown by the switch "/612" as the process's only window.
#pragma once

#include <QUrl>
#include <QWidget>
#include <functional>

class QLabel;

namespace qv {

class ThemedButton;
class TitelBar;
class WindowShadow;

class About : public QWidget {
  Q_OBJECT

 public:
  // `makerPage` is the page the maker's button opens.
  explicit About(const QUrl& makerPage, QWidget* parent = nullptr);
  ~About() override;

  // How the page is opened; tests replace it. By default the desktop's browser.
  static std::function<void(const QUrl&)> openPage;

  // The button's click: the window closes and the maker's page opens.
  void About_Click();

  TitelBar* TitelBar1;
  QLabel* Label1;
  QLabel* Label5;
  QLabel* Image1;
  ThemedButton* AboutButton;  // objectName "About"
  WindowShadow* Shadow;

 private:
  QUrl m_page;
};

}  // namespace qv

#include "about_window.h"

#include <QDesktopServices>
#include <QLabel>

#include "logo.h"
#include "themed_button.h"
#include "titel_bar.h"
#include "window_shadow.h"

namespace qv {

std::function<void(const QUrl&)> About::openPage;

namespace {
constexpr int kLogoSide = 64;
}

About::About(const QUrl& makerPage, QWidget* parent) : QWidget(parent, Qt::Window), m_page(makerPage) {
  setObjectName(QStringLiteral("About"));
  setWindowTitle(QStringLiteral("Quantavue"));
  setFixedSize(360, 200);
  setAutoFillBackground(true);
  QPalette pal = palette();
  pal.setColor(QPalette::Window, QColor(244, 244, 244));
  setPalette(pal);
  TitelBar1 = TitelBar::Install(this, false);

  Image1 = new QLabel(this);
  Image1->setObjectName(QStringLiteral("Image1"));
  Image1->setGeometry(24, 56, kLogoSide, kLogoSide);
  Image1->setPixmap(QuantavueLogo(kLogoSide, devicePixelRatioF()));

  Label1 = new QLabel(QStringLiteral("Quantavue "), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  QFont big = Label1->font();
  big.setPointSizeF(big.pointSizeF() * 2.0);
  big.setBold(true);
  Label1->setFont(big);
  Label1->setGeometry(108, 56, 236, 36);
  Label5 = new QLabel(QStringLiteral("Interactive statistics"), this);
  Label5->setObjectName(QStringLiteral("Label5"));
  QFont italic = Label5->font();
  italic.setItalic(true);
  italic.setPointSizeF(italic.pointSizeF() * 1.15);
  Label5->setFont(italic);
  Label5->setGeometry(110, 94, 236, 24);

  AboutButton = new ThemedButton(QStringLiteral("The Quantavue developers"), this);
  AboutButton->setObjectName(QStringLiteral("About"));
  AboutButton->setButtonThemeType(1);
  AboutButton->setBackColor(QColor(244, 244, 244));
  AboutButton->setForeColor(QColor(0, 70, 160));
  AboutButton->setButtonRounding(6);
  AboutButton->setCursor(Qt::PointingHandCursor);
  QFont link = AboutButton->font();
  link.setUnderline(true);
  AboutButton->setFont(link);
  AboutButton->setToolTip(makerPage.toString());
  AboutButton->setGeometry(100, 140, 236, 36);
  connect(AboutButton, &QAbstractButton::clicked, this, &About::About_Click);

  Shadow = new WindowShadow(this);
  Shadow->Shadow(this);
}

About::~About() = default;

void About::About_Click() {
  close();
  if (openPage) {
    openPage(m_page);
  } else if (m_page.isValid()) {
    QDesktopServices::openUrl(m_page);
  }
}

}  // namespace qv

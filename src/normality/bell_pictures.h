// The stored pictures of the normality window, drawn by the program: a bell that stands
// (normality accepted), a lopsided one struck out (rejected), and the copy button's icon.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>

namespace qv {

QPixmap YesBellPicture(QSize size);
QPixmap NoBellPicture(QSize size);
QIcon CopyPictureIcon();

}  // namespace qv

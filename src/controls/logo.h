// The program's logo: a small histogram under a bell curve on a rounded tile, drawn at any
// size so that it stays sharp on high-density screens.
#pragma once

#include <QPixmap>

namespace qv {

// A square logo of `side` logical pixels for a screen of the given pixel ratio.
QPixmap QuantavueLogo(int side, qreal devicePixelRatio = 1.0);

}  // namespace qv

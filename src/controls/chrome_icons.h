// Pictures of the windows' buttons, drawn at every size and pixel ratio they are asked for.
#pragma once

#include <QIcon>

namespace qv {

QIcon CopyWindowIcon();   // two sheets, the front one holding a picture: copy as an image
QIcon SheetExportIcon();  // a green sheet with an arrow into it: export to the spreadsheet
QIcon ResetIcon();        // a circular arrow: back to the whole range
QIcon RangePickIcon();    // a grid with a marked column: pick the range

}  // namespace qv

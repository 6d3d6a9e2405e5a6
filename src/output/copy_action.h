// The copy action of the windows: an image of a window on the clipboard, and a click to
// say it is there.
#pragma once

#include <QString>

class QWidget;

namespace qv {

inline constexpr const char* kCopySoundFile = "copy.wav";

// Puts an image of the window (of `window`'s top-level window; with none given, the
// active one) on the clipboard, replacing what it held. Where the platform lets the
// program read the screen, the image is the window with its frame, as the screen shows
// it; elsewhere it is the window's own drawing.
void SendPrintScreen(QWidget* window = nullptr);

// Plays copy.wav from the program's folder and returns at once. A missing file, a build
// without Qt Multimedia or a machine without sound leaves it silent.
void PlayCopySound();

// Where PlayCopySound looks for the file: beside the program.
QString CopySoundPath();

}  // namespace qv

// Hooks for runs without a person, read from the environment:
//   QUANTAVUE_AUTO_ANSWER=<ms>  every message box is answered with its default button
//                               after <ms>; its text is written to stderr first.
//   QUANTAVUE_CLOSE_AFTER=<ms>  the main window is closed <ms> after it is shown.
//   QUANTAVUE_SCREENSHOT=<file> a picture of the main window is saved and it closes.
#pragma once

class QWidget;

namespace qv {

// Answers message boxes as QUANTAVUE_AUTO_ANSWER asks; call once the application exists.
void InstallAutoAnswer();
// Arms QUANTAVUE_CLOSE_AFTER and QUANTAVUE_SCREENSHOT for the shown main window.
void ArmMainWindowHooks(QWidget* form);

}  // namespace qv

// Waiting for the office without freezing the windows: each office call runs on one
// worker thread while the GUI thread keeps painting; the user's input waits until the
// call is back, a close request is honoured, and a spreadsheet that does not answer is
// reported after a while; a long bulk read or write shows how many cells are done.
#pragma once

#include <chrono>

namespace qv {

// Installs the waiter for every office call of the process. Needs a QApplication. A bulk
// read or write still out after `progressAfter` shows a panel counting its cells.
void InstallOfficeWaiter(std::chrono::milliseconds noAnswerLimit = std::chrono::seconds(10),
                         std::chrono::milliseconds progressAfter = std::chrono::milliseconds(400));
void RemoveOfficeWaiter();

}  // namespace qv

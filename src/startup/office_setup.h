// The one-time set-up of the user's office: one setting in the LibreOffice profile makes
// every office the user starts, from the menu or a file, listen on the user's own local
// pipe, where Quantavue attaches. Nothing listens on the network. No Qt here: the chore
// runs on the terminal before any window exists.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv {

// What the office's setting holds once set up: the pipe Quantavue connects to by default.
inline constexpr std::string_view kOfficeConnectionUrl = "pipe,name=quantavue;urp;StarOffice.ServiceManager";

// The item as the office itself writes it, one line of registrymodifications.xcu.
std::string OfficeSetupItem();

struct ProfileEdit {
  enum class Outcome { Changed, Unchanged, Refused };
  Outcome outcome = Outcome::Refused;
  std::string text;     // the whole new file when Changed
  std::string message;  // why, when Unchanged or Refused
};

// The text work on registrymodifications.xcu: adds the item before the closing element,
// or removes exactly that item; every other byte stays. A text that is not the office's
// XML, or that holds a connection URL Quantavue did not write, is refused.
ProfileEdit AddOfficeSetup(std::string_view xcu);
ProfileEdit RemoveOfficeSetup(std::string_view xcu);

// Whether an office started with these arguments keeps its profile in `profileDir` (the
// folder holding user/). Without -env:UserInstallation it uses `profileDir` when that is
// the default one.
bool OfficeUsesProfile(const std::vector<std::string>& args, const std::string& profileDir,
                       const std::string& defaultProfileDir, const std::string& configHome);

// The user's configuration folder ($XDG_CONFIG_HOME, else ~/.config) and the office's
// default profile folder in it.
std::string ConfigHome();
std::string DefaultProfileDir();

// "--setup-office" or "--undo-setup-office", alone or with "--yes".
bool IsOfficeSetupCommand(int argc, char** argv);
// Says what it will do, asks on the terminal (unless --yes) and edits the profile.
// 0 when done or nothing was to do, 1 when refused or declined, 2 for a bad command line.
int RunOfficeSetup(int argc, char** argv);

}  // namespace qv

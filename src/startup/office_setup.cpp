#include "office_setup.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>

namespace qv {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kClosing = "</oor:items>";
constexpr std::string_view kSettingName = "oor:name=\"ooSetupConnectionURL\"";

std::size_t Count(std::string_view text, std::string_view what) {
  std::size_t n = 0;
  for (auto p = text.find(what); p != std::string_view::npos; p = text.find(what, p + what.size())) ++n;
  return n;
}

// The office writes "\n"; a file moved from elsewhere may have "\r\n".
std::string_view LineEnd(std::string_view text) {
  return text.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
}

// Where each copy of our item stands as a whole line: the offset of the line's start.
std::vector<std::size_t> OurLines(std::string_view text, std::string_view eol) {
  std::string item = OfficeSetupItem();
  std::vector<std::size_t> at;
  for (auto p = text.find(item); p != std::string_view::npos; p = text.find(item, p + 1)) {
    bool startsLine = p == 0 || text[p - 1] == '\n';
    bool endsLine = text.substr(p + item.size(), eol.size()) == eol;
    if (startsLine && endsLine) at.push_back(p);
  }
  return at;
}

// The shape the office writes: the declaration, the items element, one item per line,
// and the closing element on a line of its own at the end. Empty when it fits.
std::optional<std::string> NotTheOfficesXml(std::string_view text) {
  const std::string bad = "It is not the office's XML settings file.";
  if (text.rfind("<?xml", 0) != 0 || text.find("<oor:items") == std::string_view::npos) return bad;
  auto close = text.rfind(kClosing);
  if (close == std::string_view::npos) return bad;
  if (text.substr(close + kClosing.size()).find_first_not_of(" \t\r\n") != std::string_view::npos) return bad;
  if (close == 0 || text[close - 1] != '\n') return bad;
  if (Count(text, "<item ") != Count(text, "</item>")) return bad;
  return std::nullopt;
}

// The value of a connection URL that is not ours, to name it in the message.
std::string OtherValue(std::string_view text) {
  std::string item = OfficeSetupItem();
  for (auto p = text.find(kSettingName); p != std::string_view::npos; p = text.find(kSettingName, p + 1)) {
    auto lineStart = text.rfind('\n', p);
    lineStart = lineStart == std::string_view::npos ? 0 : lineStart + 1;
    if (text.substr(lineStart, item.size()) == item) continue;
    auto v = text.find("<value>", p);
    auto e = text.find("</value>", p);
    if (v != std::string_view::npos && e != std::string_view::npos && v < e && e - v < 400)
      return std::string(text.substr(v + 7, e - v - 7));
    return "(a value written in another form)";
  }
  return {};
}

ProfileEdit Refuse(std::string message) { return {ProfileEdit::Outcome::Refused, {}, std::move(message)}; }
ProfileEdit Keep(std::string message) { return {ProfileEdit::Outcome::Unchanged, {}, std::move(message)}; }

// Checks shared by both directions; the number of our lines when the text may be edited.
std::optional<ProfileEdit> Check(std::string_view text, std::size_t& ours) {
  if (auto bad = NotTheOfficesXml(text)) return Refuse(*bad);
  ours = OurLines(text, LineEnd(text)).size();
  if (Count(text, kSettingName) != ours)
    return Refuse("It already holds another connection URL, " + OtherValue(text) +
                  ", which Quantavue did not write. Remove that setting first (Tools > Options > "
                  "Advanced > Expert Configuration, ooSetupConnectionURL), or leave it.");
  return std::nullopt;
}

}  // namespace

std::string OfficeSetupItem() {
  return "<item oor:path=\"/org.openoffice.Setup/Office\"><prop oor:name=\"ooSetupConnectionURL\" "
         "oor:op=\"fuse\"><value>" +
         std::string(kOfficeConnectionUrl) + "</value></prop></item>";
}

ProfileEdit AddOfficeSetup(std::string_view xcu) {
  std::size_t ours = 0;
  if (auto refused = Check(xcu, ours)) return *refused;
  if (ours > 0) return Keep("The office is already set up for Quantavue.");
  std::string_view eol = LineEnd(xcu);
  auto close = xcu.rfind(kClosing);
  std::string text;
  text.reserve(xcu.size() + 200);
  text.append(xcu.substr(0, close)).append(OfficeSetupItem()).append(eol).append(xcu.substr(close));
  return {ProfileEdit::Outcome::Changed, std::move(text), {}};
}

ProfileEdit RemoveOfficeSetup(std::string_view xcu) {
  std::size_t ours = 0;
  if (auto refused = Check(xcu, ours)) return *refused;
  if (ours == 0) return Keep("The office is not set up for Quantavue: there is nothing to undo.");
  std::string_view eol = LineEnd(xcu);
  std::size_t length = OfficeSetupItem().size() + eol.size();
  std::string text;
  std::size_t from = 0;
  for (std::size_t at : OurLines(xcu, eol)) {
    text.append(xcu.substr(from, at - from));
    from = at + length;
  }
  text.append(xcu.substr(from));
  return {ProfileEdit::Outcome::Changed, std::move(text), {}};
}

namespace {

std::string PercentDecoded(std::string_view s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '%' && i + 2 < s.size() && std::isxdigit(static_cast<unsigned char>(s[i + 1])) &&
        std::isxdigit(static_cast<unsigned char>(s[i + 2]))) {
      out += static_cast<char>(std::stoi(std::string(s.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      out += s[i];
    }
  }
  return out;
}

std::string Normal(const std::string& path) {
  std::error_code ec;
  fs::path p = fs::weakly_canonical(fs::path(path), ec);
  if (ec) p = fs::path(path).lexically_normal();
  std::string s = p.string();
  while (s.size() > 1 && s.back() == '/') s.pop_back();
  return s;
}

}  // namespace

bool OfficeUsesProfile(const std::vector<std::string>& args, const std::string& profileDir,
                       const std::string& defaultProfileDir, const std::string& configHome) {
  std::string used = defaultProfileDir;
  for (const std::string& a : args) {
    for (std::string_view key : {"-env:UserInstallation=", "--env:UserInstallation="}) {
      if (a.rfind(key, 0) != 0) continue;
      std::string url = a.substr(key.size());
      auto var = url.find("$SYSUSERCONFIG");
      if (var != std::string::npos) url.replace(var, 14, "file://" + configHome);
      // A form we cannot read might be ours: count it as ours rather than risk the edit.
      if (url.rfind("file://", 0) != 0) return true;
      used = PercentDecoded(url.substr(7));
    }
  }
  return Normal(used) == Normal(profileDir);
}

std::string ConfigHome() {
  const char* xdg = std::getenv("XDG_CONFIG_HOME");
  if (xdg && *xdg == '/') return xdg;
  const char* home = std::getenv("HOME");
  return std::string(home ? home : "") + "/.config";
}

std::string DefaultProfileDir() { return ConfigHome() + "/libreoffice/4"; }

bool IsOfficeSetupCommand(int argc, char** argv) {
  return argc >= 2 && (std::strcmp(argv[1], "--setup-office") == 0 || std::strcmp(argv[1], "--undo-setup-office") == 0);
}

namespace {

// The offices of this user that keep their settings in `profileDir`, by process id.
std::vector<int> OfficesOnProfile(const std::string& profileDir) {
  std::vector<int> found;
  DIR* proc = opendir("/proc");
  if (!proc) return found;
  while (dirent* e = readdir(proc)) {
    if (!std::isdigit(static_cast<unsigned char>(e->d_name[0]))) continue;
    std::string dir = std::string("/proc/") + e->d_name;
    struct stat st {};
    if (stat(dir.c_str(), &st) != 0 || st.st_uid != getuid()) continue;
    std::ifstream comm(dir + "/comm");
    std::string name;
    std::getline(comm, name);
    if (name != "soffice.bin") continue;
    std::ifstream cmd(dir + "/cmdline", std::ios::binary);
    std::vector<std::string> args;
    for (std::string a; std::getline(cmd, a, '\0');) args.push_back(a);
    if (args.empty()) continue;  // ended, not yet reaped: it writes nothing any more
    if (OfficeUsesProfile(args, profileDir, DefaultProfileDir(), ConfigHome())) found.push_back(std::atoi(e->d_name));
  }
  closedir(proc);
  return found;
}

bool WriteAtomically(const std::string& path, const std::string& text, mode_t mode, std::string& error) {
  std::string temp = path + ".XXXXXX";
  int fd = mkstemp(temp.data());
  if (fd < 0) {
    error = std::strerror(errno);
    return false;
  }
  const char* p = text.data();
  std::size_t left = text.size();
  bool ok = fchmod(fd, mode) == 0;
  while (ok && left > 0) {
    ssize_t n = write(fd, p, left);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) ok = false;
    else p += n, left -= static_cast<std::size_t>(n);
  }
  ok = ok && fsync(fd) == 0;
  if (!ok) error = std::strerror(errno);
  ok = close(fd) == 0 && ok;
  if (ok && rename(temp.c_str(), path.c_str()) != 0) {
    error = std::strerror(errno);
    ok = false;
  }
  if (!ok) unlink(temp.c_str());
  return ok;
}

}  // namespace

int RunOfficeSetup(int argc, char** argv) {
  bool undo = std::strcmp(argv[1], "--undo-setup-office") == 0;
  bool yes = false;
  for (int i = 2; i < argc; ++i) {
    if (std::strcmp(argv[i], "--yes") == 0) {
      yes = true;
    } else {
      std::fprintf(stderr, "usage: quantavue --setup-office [--yes]\n       quantavue --undo-setup-office [--yes]\n");
      return 2;
    }
  }
  const std::string profileDir = DefaultProfileDir();
  const std::string file = profileDir + "/user/registrymodifications.xcu";
  const std::string backup = file + ".quantavue-backup";
  if (undo)
    std::printf("Quantavue will remove the setting ooSetupConnectionURL = %s\n"
                "that it added to your LibreOffice profile:\n  %s\n"
                "LibreOffice will then listen only when started with --accept.\n"
                "A copy of the file as it is now is kept as\n  %s\n\n",
                std::string(kOfficeConnectionUrl).c_str(), file.c_str(), backup.c_str());
  else
    std::printf("Quantavue will add one setting to your LibreOffice profile:\n  %s\n"
                "  ooSetupConnectionURL = %s\n"
                "Every LibreOffice you start then also listens on a local pipe that only your user\n"
                "can open, where Quantavue finds it. Nothing listens on the network.\n"
                "A copy of the file as it is now is kept as\n  %s\n"
                "Undo with: quantavue --undo-setup-office\n\n",
                file.c_str(), std::string(kOfficeConnectionUrl).c_str(), backup.c_str());

  struct stat st {};
  if (stat(file.c_str(), &st) != 0) {
    std::printf("There is no LibreOffice profile at %s.\nStart LibreOffice once and close it, then run this again. "
                "Nothing was changed.\n", file.c_str());
    return 1;
  }
  std::ifstream in(file, std::ios::binary);
  std::ostringstream read;
  if (in.is_open() && S_ISREG(st.st_mode)) read << in.rdbuf();
  if (!in.is_open() || !S_ISREG(st.st_mode) || in.bad()) {
    std::printf("The profile %s cannot be read. Nothing was changed.\n", file.c_str());
    return 1;
  }
  const std::string original = read.str();
  ProfileEdit edit = undo ? RemoveOfficeSetup(original) : AddOfficeSetup(original);
  if (edit.outcome == ProfileEdit::Outcome::Unchanged) {
    std::printf("%s Nothing was changed.\n", edit.message.c_str());
    return 0;
  }
  if (edit.outcome == ProfileEdit::Outcome::Refused) {
    std::printf("The profile %s cannot be changed: %s Nothing was changed.\n", file.c_str(), edit.message.c_str());
    return 1;
  }
  // A running office writes its settings back when it ends, over any change made now.
  auto officeRuns = [&] {
    std::vector<int> pids = OfficesOnProfile(profileDir);
    if (pids.empty()) return false;
    std::printf("LibreOffice is running (process %d) with this profile. Close every LibreOffice window, "
                "then run this again. Nothing was changed.\n", pids.front());
    return true;
  };
  if (officeRuns()) return 1;
  if (!yes) {
    std::printf("Go ahead? [y/N] ");
    std::fflush(stdout);
    std::string answer;
    if (!std::getline(std::cin, answer) || (answer != "y" && answer != "Y" && answer != "yes")) {
      std::printf("Nothing was changed.\n");
      return 1;
    }
    if (officeRuns()) return 1;
  }
  std::string error;
  if (!WriteAtomically(backup, original, st.st_mode & 07777, error)) {
    std::printf("The backup %s cannot be written (%s). Nothing was changed.\n", backup.c_str(), error.c_str());
    return 1;
  }
  if (!WriteAtomically(file, edit.text, st.st_mode & 07777, error)) {
    std::printf("The profile %s cannot be written (%s). Nothing was changed.\n", file.c_str(), error.c_str());
    return 1;
  }
  if (undo)
    std::printf("Done: LibreOffice no longer listens for Quantavue when it starts.\n");
  else
    std::printf("Done: the next LibreOffice you start listens for Quantavue.\n");
  return 0;
}

}  // namespace qv

// The office's one-time set-up: the text edit of registrymodifications.xcu on a profile
// the office wrote itself, its refusals, the command on a profile folder, and an office
// started plainly on the set-up profile that Quantavue's office layer attaches to.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "office_setup.h"

namespace qv {
namespace {

namespace fs = std::filesystem;
using Outcome = ProfileEdit::Outcome;

std::string Slurp(const fs::path& p) {
  std::ostringstream s;
  s << std::ifstream(p, std::ios::binary).rdbuf();
  return s.str();
}

void Spit(const fs::path& p, const std::string& text) {
  std::ofstream(p, std::ios::binary | std::ios::trunc) << text;
}

// Written by a headless office on a fresh profile (data/make_profile.sh).
std::string RealProfile() { return Slurp(fs::path(QV_TEST_DATA) / "registrymodifications.xcu"); }

std::string Replace(std::string s, const std::string& from, const std::string& to) {
  for (auto p = s.find(from); p != std::string::npos; p = s.find(from, p + to.size())) s.replace(p, from.size(), to);
  return s;
}

std::size_t Count(const std::string& s, const std::string& what) {
  std::size_t n = 0;
  for (auto p = s.find(what); p != std::string::npos; p = s.find(what, p + 1)) ++n;
  return n;
}

TEST(OfficeSetupText, AddsOneLineBeforeTheEndAndUndoGivesBackEveryByte) {
  const std::string real = RealProfile();
  ASSERT_NE(real.find("ooSetupInstCompleted"), std::string::npos) << "test data missing";
  const std::string item = OfficeSetupItem();
  // Where the office itself may leave the item after rewriting the file: among the others.
  std::string officeMoved = real;
  officeMoved.insert(officeMoved.find("<item "), item + "\n");
  struct Case { const char* name; std::string text, eol; } cases[] = {
      {"as the office writes it", real, "\n"},
      {"with CRLF line ends", Replace(real, "\n", "\r\n"), "\r\n"},
      {"without a final line end", real.substr(0, real.size() - 1), "\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ProfileEdit added = AddOfficeSetup(c.text);
    ASSERT_EQ(added.outcome, Outcome::Changed) << added.message;
    auto close = c.text.rfind("</oor:items>");
    EXPECT_EQ(added.text, c.text.substr(0, close) + item + c.eol + c.text.substr(close));
    EXPECT_EQ(AddOfficeSetup(added.text).outcome, Outcome::Unchanged);
    ProfileEdit removed = RemoveOfficeSetup(added.text);
    ASSERT_EQ(removed.outcome, Outcome::Changed) << removed.message;
    EXPECT_EQ(removed.text, c.text);
    EXPECT_EQ(RemoveOfficeSetup(c.text).outcome, Outcome::Unchanged);
  }
  ProfileEdit moved = RemoveOfficeSetup(officeMoved);
  ASSERT_EQ(moved.outcome, Outcome::Changed);
  EXPECT_EQ(moved.text, real);
  EXPECT_EQ(AddOfficeSetup(officeMoved).outcome, Outcome::Unchanged);
}

TEST(OfficeSetupText, RefusesWhatIsNotTheOfficesFileOrHoldsAnotherUrl) {
  const std::string real = RealProfile();
  const std::string item = OfficeSetupItem();
  auto withLine = [&](const std::string& line) {
    std::string t = real;
    t.insert(t.rfind("</oor:items>"), line + "\n");
    return t;
  };
  struct Case { const char* name; std::string text; const char* says; } cases[] = {
      {"empty", "", "not the office's XML"},
      {"plain text", "ooSetupConnectionURL=pipe\n", "not the office's XML"},
      {"cut short", real.substr(0, real.size() / 2), "not the office's XML"},
      {"closing element not on its own line", Replace(real, "</item>\n</oor:items>", "</item></oor:items>"),
       "not the office's XML"},
      {"text after the end", real + "<item>", "not the office's XML"},
      {"an unclosed item", withLine("<item oor:path=\"/x\"><prop oor:name=\"y\">"), "not the office's XML"},
      {"a socket URL of the user's",
       withLine("<item oor:path=\"/org.openoffice.Setup/Office\"><prop oor:name=\"ooSetupConnectionURL\" "
                "oor:op=\"fuse\"><value>socket,host=0,port=2002;urp;</value></prop></item>"),
       "socket,host=0,port=2002;urp;"},
      {"our value written another way",
       withLine(Replace(item, "oor:op=\"fuse\"", "oor:op=\"replace\"")), "another connection URL"},
      {"ours beside another", withLine(item + "\n" + Replace(item, "quantavue", "other")), "name=other"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    for (const ProfileEdit& e : {AddOfficeSetup(c.text), RemoveOfficeSetup(c.text)})
      EXPECT_TRUE(e.outcome == Outcome::Refused && e.text.empty() &&
                  e.message.find(c.says) != std::string::npos) << e.message;
  }
}

TEST(OfficeSetupText, KnowsWhichOfficeUsesTheProfile) {
  const std::string home = "/home/u/.config";
  const std::string def = home + "/libreoffice/4";
  struct Case { std::vector<std::string> args; std::string profile; bool uses; } cases[] = {
      {{"/usr/lib/libreoffice/program/soffice.bin", "--calc"}, def, true},
      {{"soffice.bin", "--calc"}, "/tmp/other", false},
      {{"soffice.bin", "-env:UserInstallation=file:///tmp/qv-1"}, "/tmp/qv-1", true},
      {{"soffice.bin", "-env:UserInstallation=file:///tmp/qv-1/"}, "/tmp/qv-1", true},
      {{"soffice.bin", "--env:UserInstallation=file:///tmp/a%20b"}, "/tmp/a b", true},
      {{"soffice.bin", "-env:UserInstallation=file:///tmp/qv-1"}, def, false},
      {{"soffice.bin", "-env:UserInstallation=$SYSUSERCONFIG/libreoffice/4"}, def, true},
      {{"soffice.bin", "-env:UserInstallation=vnd.sun.star.expand:$X"}, def, true},
  };
  for (const Case& c : cases)
    EXPECT_EQ(OfficeUsesProfile(c.args, c.profile, def, home), c.uses) << c.args.back() << " on " << c.profile;
}

// The soffice.bin processes started on this profile.
std::vector<pid_t> OfficesOn(const fs::path& profile) {
  std::vector<pid_t> pids;
  for (auto& e : fs::directory_iterator("/proc")) {
    std::string name = e.path().filename();
    if (name.empty() || !std::isdigit(static_cast<unsigned char>(name[0]))) continue;
    std::ifstream comm(e.path() / "comm");
    std::string c;
    std::getline(comm, c);
    if (c == "soffice.bin" && Slurp(e.path() / "cmdline").find(profile.string()) != std::string::npos)
      pids.push_back(std::stoi(name));
  }
  return pids;
}

// A configuration folder of its own, as XDG_CONFIG_HOME, for the command.
class OfficeSetupCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    home_ = fs::temp_directory_path() / ("qv-office-setup-" + std::to_string(getpid()));
    fs::remove_all(home_);
    fs::create_directories(home_);
    setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
  }
  void TearDown() override { fs::remove_all(home_); }
  fs::path profileDir() const { return home_ / "libreoffice/4"; }
  fs::path file() const { return profileDir() / "user/registrymodifications.xcu"; }
  static int Run(std::vector<std::string> args) {
    args.insert(args.begin(), "quantavue");
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    return RunOfficeSetup(static_cast<int>(args.size()), argv.data());
  }
  fs::path home_;
};

TEST_F(OfficeSetupCommand, WritesWithBackupAndUndoesAndChangesNothingWhenItCannot) {
  EXPECT_EQ(Run({"--setup-office", "--yes"}), 1);  // no profile yet
  EXPECT_FALSE(fs::exists(file()));
  fs::create_directories(file().parent_path());
  Spit(file(), "garbage");
  EXPECT_EQ(Run({"--setup-office", "--yes"}), 1);
  EXPECT_EQ(Slurp(file()), "garbage");
  EXPECT_EQ(Run({"--setup-office", "--please"}), 2);

  const std::string real = RealProfile();
  Spit(file(), real);
  fs::permissions(file(), fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_EQ(Run({"--setup-office", "--yes"}), 0);
  EXPECT_EQ(Slurp(file()), AddOfficeSetup(real).text);
  EXPECT_EQ(Slurp(file().string() + ".quantavue-backup"), real);
  EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  // Each done twice: already done, nothing to undo.
  for (const char* command : {"--setup-office", "--undo-setup-office", "--undo-setup-office"}) {
    ASSERT_EQ(Run({command, "--yes"}), 0) << command;
    EXPECT_EQ(Slurp(file()), command[2] == 's' ? AddOfficeSetup(real).text : real) << command;
  }
  // Only the profile, its backup and nothing left over from the atomic writes.
  std::size_t files = 0;
  for (auto& e : fs::directory_iterator(file().parent_path())) files += e.is_regular_file();
  EXPECT_EQ(files, 2u);
}

// The office's own setting at work: an office started with no --accept listens on the
// user's pipe, and the program's office layer attaches to it.
TEST_F(OfficeSetupCommand, PlainOfficeOnTheSetUpProfileListensForQuantavue) {
  const std::string pipe = "/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_quantavue";
  struct stat st {};
  if (lstat(pipe.c_str(), &st) == 0) GTEST_SKIP() << pipe << " is taken by another office";
  if (system("command -v soffice >/dev/null") != 0) GTEST_SKIP() << "no office installed";
  const std::string url = "-env:UserInstallation=file://" + profileDir().string();
  // The office makes its profile on a first run, as for a new user; this run also makes
  // the workbook the listening office opens.
  Spit(home_ / "book.csv", "x\n1\n2\n");
  ASSERT_EQ(system(("cd '" + home_.string() + "' && soffice --headless --norestore '" + url +
                    "' --convert-to ods book.csv >/dev/null 2>&1").c_str()), 0);
  ASSERT_TRUE(fs::exists(file()));
  ASSERT_TRUE(fs::exists(home_ / "book.ods"));
  const std::string book = (home_ / "book.ods").string();
  ASSERT_EQ(Run({"--setup-office", "--yes"}), 0);

  pid_t office = fork();
  if (office == 0) {
    setpgid(0, 0);
    execlp("soffice", "soffice", "--headless", "--norestore", url.c_str(), book.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  setpgid(office, office);
  setenv("QUANTAVUE_CONNECT", "pipe,name=quantavue;urp;", 1);
  int waited = system((std::string(QV_OFFICE_TOOL) + " wait").c_str());
  // A running office writes its settings back over any change: no undo now.
  int undoWhileRunning = Run({"--undo-setup-office", "--yes"});
  std::string during = Slurp(file());
  for (pid_t pid : OfficesOn(profileDir())) kill(pid, SIGKILL);
  kill(-office, SIGKILL);
  waitpid(office, nullptr, 0);
  for (int i = 0; i < 100 && !OfficesOn(profileDir()).empty(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  unlink(pipe.c_str());  // the killed office leaves its socket behind
  unsetenv("QUANTAVUE_CONNECT");

  EXPECT_EQ(waited, 0) << "qv-office could not attach on the pipe";
  EXPECT_EQ(undoWhileRunning, 1);
  // The office rewrites the file in its own order, and keeps the item as it is.
  EXPECT_EQ(Count(during, OfficeSetupItem() + "\n"), 1u);
  ASSERT_EQ(Run({"--undo-setup-office", "--yes"}), 0);
  EXPECT_EQ(Count(Slurp(file()), "ooSetupConnectionURL"), 0u);
}

}  // namespace
}  // namespace qv

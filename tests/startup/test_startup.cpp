// The quantavue program itself against a real headless office, with its scripted-run
// hooks answering the messages and closing the window: each way out of the program must
// end the process by itself, with no crash and no signal.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <iterator>
#include <thread>
#include <vector>

#include "office_fixture.h"

namespace qv::testing {
namespace {

using namespace std::chrono_literals;

struct Outcome {
  bool ended = false, signalled = false;  // ended by itself, within the limit
  int status = -1;                        // exit status, or the signal's number
  std::string err;                        // what it wrote on stderr
};

std::string PipePath(const std::string& name) { return "/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_" + name; }

// Runs quantavue with `env` added; `during` is called once after `at` has passed.
Outcome RunProgram(std::map<std::string, std::string> env, std::vector<std::string> args = {},
                   std::chrono::seconds limit = 25s, std::chrono::milliseconds at = {},
                   const std::function<void()>& during = {}) {
  const char* binary = std::getenv("QV_TEST_BINARY") ? std::getenv("QV_TEST_BINARY") : QUANTAVUE_BINARY;
  std::string errFile = std::filesystem::temp_directory_path() / ("qv-startup-" + std::to_string(getpid()) + ".err");
  pid_t pid = fork();
  if (pid == 0) {
    for (auto& [k, v] : env) v == "<unset>" ? unsetenv(k.c_str()) : setenv(k.c_str(), v.c_str(), 1);
    int fd = open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(fd, 2);
    std::vector<char*> argv{const_cast<char*>(binary)};
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    execv(binary, argv.data());
    _exit(127);
  }
  Outcome out;
  auto start = std::chrono::steady_clock::now();
  bool called = !during;
  int status = 0;
  for (;;) {
    if (waitpid(pid, &status, WNOHANG) == pid) {
      out.ended = true;
      break;
    }
    auto elapsed = std::chrono::steady_clock::now() - start;
    if (!called && elapsed >= at) {
      called = true;
      during();
    }
    if (elapsed > limit) {
      kill(pid, SIGKILL);
      waitpid(pid, &status, 0);
      break;
    }
    std::this_thread::sleep_for(50ms);
  }
  out.signalled = out.ended && WIFSIGNALED(status);
  if (out.ended) out.status = out.signalled ? WTERMSIG(status) : WEXITSTATUS(status);
  std::ifstream in(errFile);
  out.err.assign(std::istreambuf_iterator<char>(in), {});
  std::filesystem::remove(errFile);
  return out;
}

std::map<std::string, std::string> Scripted(const std::string& connection, int closeAfterMs = -1) {
  std::map<std::string, std::string> env{{"QUANTAVUE_CONNECT", connection}, {"QUANTAVUE_AUTO_ANSWER", "300"}};
  if (closeAfterMs >= 0) env["QUANTAVUE_CLOSE_AFTER"] = std::to_string(closeAfterMs);
  return env;
}

::testing::AssertionResult Ended(const Outcome& out, int code) {
  if (!out.ended) return ::testing::AssertionFailure() << "the process did not end by itself\n" << out.err;
  if (out.signalled) return ::testing::AssertionFailure() << "killed by signal " << out.status << "\n" << out.err;
  if (out.status != code) return ::testing::AssertionFailure() << "exit status " << out.status << "\n" << out.err;
  return ::testing::AssertionSuccess();
}
#define EXPECT_ENDED(out, code) EXPECT_TRUE(Ended(out, code))

// A socket where the office's pipe would be, run by the test: `serve` gets each
// accepted connection.
class FakePeer {
 public:
  FakePeer(const std::string& name, std::function<void(int)> serve) : path_(PipePath(name)) {
    unlink(path_.c_str());
    fd_ = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un a{};
    a.sun_family = AF_UNIX;
    std::snprintf(a.sun_path, sizeof a.sun_path, "%s", path_.c_str());
    bind(fd_, reinterpret_cast<sockaddr*>(&a), sizeof a);
    listen(fd_, 4);
    thread_ = std::thread([this, serve] {
      for (;;) {
        int c = accept(fd_, nullptr, nullptr);
        if (c < 0) return;
        serve(c);
        held_.push_back(c);
      }
    });
  }
  ~FakePeer() {
    shutdown(fd_, SHUT_RDWR);
    close(fd_);
    thread_.join();
    for (int c : held_) close(c);
    unlink(path_.c_str());
  }

 private:
  std::string path_;
  int fd_ = -1;
  std::thread thread_;
  std::vector<int> held_;
};

std::string Tag() { return std::to_string(getpid()); }

// Runs first: the shared office has no document open yet.
TEST(Startup, NoOfficeAndAnOfficeWithoutDocument) {
  const std::pair<std::string, const char*> cases[] = {
      {"pipe,name=qvnone" + Tag() + ";urp;", "No running Excel instance found"},
      {HeadlessOffice::Get().connection(), "An Excel instance found but no Activeworkbook"}};
  for (const auto& [connection, said] : cases) {
    Outcome out = RunProgram(Scripted(connection));
    EXPECT_ENDED(out, 0);
    EXPECT_NE(out.err.find(said), std::string::npos) << out.err;
  }
}

class SessionTest : public OfficeTest {
 protected:
  bool hiddenBook() const override { return false; }
};

CellBlock Numbers() {  // twenty numbers under a header in A1:A21
  CellBlock b;
  b.resize(21, 1);
  b.setText(0, "x");
  for (int i = 1; i <= 20; ++i) b.setNumber(i, i * 1.5);
  return b;
}

TEST_F(SessionTest, EveryWayOutEndsTheProcess) {
  // closeAfterMs -1: the program closes by itself; said: on stderr.
  struct Case {
    const char* name; std::function<void(Workbook&)> prepare; int closeAfterMs; const char* said;
  };
  // Writes `cells` at A1 and selects A1 down to `lastRow`.
  const auto selected = [](CellBlock cells, std::int32_t lastRow) {
    return [=](Workbook& b) {
      b.write({0, 0, 0, 0, 0}, cells);
      b.select({CellRangeRef{0, 0, 0, 0, lastRow}});
    };
  };
  const char* closed = "closing the main window (shown)";
  const Case cases[] = {
      {"a blank cell, the window closed", [](Workbook& b) { b.select({CellRangeRef{0, 3, 3, 3, 3}}); }, 1500,
       closed},
      {"three numbers, the window closed", selected(Column({"h:x", "n:1", "n:2", "n:3"}), 3), 1500, closed},
      {"a shape selected", [](Workbook& b) { b.drawRectangle(0); }, -1, ""},
      {"error cells, the notice answered",
       [](Workbook& b) {
         b.write({0, 0, 0, 0, 0}, Numbers());
         b.setFormula(0, 0, 21, "=1/0");
         b.select({CellRangeRef{0, 0, 0, 0, 21}});
       },
       -1, "cells values errors"},
      {"the window closed after an intake", selected(Numbers(), 20), 3000, closed},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    if (book) book->close();
    book = office().createWorkbook(false);
    c.prepare(*book);
    book->setModified(false);
    // While the window is up after an intake, the workbook holds our name.
    std::optional<bool> named;
    Workbook* b = book.get();
    Outcome out = RunProgram(Scripted(HeadlessOffice::Get().connection(), c.closeAfterMs), {}, 25s,
                             std::chrono::milliseconds(c.closeAfterMs > 2000 ? c.closeAfterMs - 800 : 0),
                             [&] { named = b->resolveName("data919234xxx").has_value(); });
    EXPECT_ENDED(out, 0);
    if (c.closeAfterMs > 2000) { EXPECT_EQ(named, true) << "the intake did not name the range"; }
    EXPECT_NE(out.err.find(c.said), std::string::npos) << out.err;
    // Our workbook name is gone, and with it every trace of the session.
    EXPECT_FALSE(book->resolveName("data919234xxx").has_value());
    EXPECT_FALSE(book->modified()) << "the office would ask to save a document nobody changed";
  }
}

// A shown workbook of that office with the numbers selected, taken at once at start.
std::shared_ptr<Workbook> WithNumbers(HeadlessOffice& office) {
  auto book = office.office().createWorkbook(false);
  book->write({0, 0, 0, 0, 0}, Numbers());
  book->select({CellRangeRef{0, 0, 0, 0, 20}});
  return book;
}

TEST(Startup, OfficeKilledDuringTheSession) {
  struct Case { const char* name; std::chrono::milliseconds killAt; } cases[] = {
      {"one second after start", 1000ms}, {"after the intake", 4000ms}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::unique_ptr<HeadlessOffice> own = HeadlessOffice::StartAnother();
    auto book = WithNumbers(*own);
    Outcome out = RunProgram(Scripted(own->connection(), 6000), {}, 25s, c.killAt, [&] { own->Kill(); });
    EXPECT_ENDED(out, 0);
    book.reset();
  }
}

// The office freezes after the intake: closing the window waits for it, the notice
// comes after ten seconds, and its answer ends the program.
TEST(Startup, OfficeFrozenDuringTheSession) {
  std::unique_ptr<HeadlessOffice> own = HeadlessOffice::StartAnother();
  auto book = WithNumbers(*own);
  Outcome out = RunProgram(Scripted(own->connection(), 4000), {}, 30s, 3000ms, [&] { own->Freeze(true); });
  own->Freeze(false);
  EXPECT_ENDED(out, 1);
  EXPECT_NE(out.err.find("The spreadsheet does not answer."), std::string::npos) << out.err;
  book.reset();
}

TEST(Startup, PeersThatMisbehave) {
  // One accepts and never answers: the attach waits, the notice comes, and its answer ends
  // the program. One closes the pipe under the program's feet: the office is gone, no SIGPIPE.
  struct Case { const char* name; std::function<void(int)> serve; int status; const char* said; } cases[] = {
      {"qvsilent", [](int) {}, 1, "The spreadsheet does not answer."},
      {"qvclosing", [](int c) { shutdown(c, SHUT_RDWR); }, 0, "gone away"}};
  for (const Case& c : cases) {
    FakePeer peer(c.name + Tag(), c.serve);
    Outcome out = RunProgram(Scripted("pipe,name=" + std::string(c.name) + Tag() + ";urp;"), {}, 30s);
    EXPECT_ENDED(out, c.status);
    EXPECT_NE(out.err.find(c.said), std::string::npos) << out.err;
  }
  // A link where the pipe should be is refused, even to our own office.
  {
    std::string link = PipePath("qvlink" + Tag());
    unlink(link.c_str());
    std::string name = HeadlessOffice::Get().connection();
    name = name.substr(name.find("name=") + 5);
    name = name.substr(0, name.find(';'));
    ASSERT_EQ(symlink(PipePath(name).c_str(), link.c_str()), 0);
    Outcome out = RunProgram(Scripted("pipe,name=qvlink" + Tag() + ";urp;", 1000));
    unlink(link.c_str());
    EXPECT_ENDED(out, 0);
    EXPECT_NE(out.err.find("is not a socket of your own"), std::string::npos) << out.err;
  }
}

// The help and contact pages are found from the build tree too. The offscreen platform
// opens nothing but names the page it was asked to open.
TEST(Startup, PagesAreFoundFromTheBuildTree) {
  for (const char* page : {"/1003", "/613"}) {
    Outcome out = RunProgram({{"QT_QPA_PLATFORM", "offscreen"}}, {page}, 10s);
    EXPECT_ENDED(out, 0);
    auto at = out.err.find("file://");
    if (at == std::string::npos) GTEST_SKIP() << "this platform does not name the page: " << out.err;
    std::string path = out.err.substr(at + 7, out.err.find('\'', at) - at - 7);
    EXPECT_TRUE(std::filesystem::exists(path)) << page << ": " << path;
  }
}

TEST(Startup, NoDisplayGivesAMessageNotACoreDump) {
  Outcome nothing = RunProgram({{"QT_QPA_PLATFORM", "<unset>"}, {"DISPLAY", "<unset>"}, {"WAYLAND_DISPLAY", "<unset>"}},
                               {"/613"}, 10s);
  EXPECT_ENDED(nothing, 1);
  EXPECT_NE(nothing.err.find("needs a graphical display"), std::string::npos) << nothing.err;
  Outcome nope = RunProgram({}, {"-platform", "nope", "/613"}, 10s);
  EXPECT_ENDED(nope, 1);
  EXPECT_NE(nope.err.find("\"nope\""), std::string::npos) << nope.err;
}

}  // namespace
}  // namespace qv::testing

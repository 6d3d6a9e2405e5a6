#include "office_fixture.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace qv::testing {

HeadlessOffice& HeadlessOffice::Get() {
  static HeadlessOffice office(0);
  return office;
}

std::unique_ptr<HeadlessOffice> HeadlessOffice::StartAnother() {
  static int serial = 0;
  return std::unique_ptr<HeadlessOffice>(new HeadlessOffice(++serial));
}

HeadlessOffice::HeadlessOffice(int serial) {
  std::string tag = std::to_string(getpid()) + (serial ? "x" + std::to_string(serial) : "");
  profile_ = (std::filesystem::temp_directory_path() / ("qv-office-" + tag)).string();
  std::filesystem::create_directories(profile_);
  std::string pipe = "qvtest" + tag;
  connection_ = "pipe,name=" + pipe + ";urp;";
  pid_ = fork();
  if (pid_ == 0) {
    setsid();  // its own process group, so that the launcher and the office end together
    std::string env = "-env:UserInstallation=file://" + profile_;
    std::string accept = "--accept=" + connection_;
    execlp("soffice", "soffice", "--headless", "--invisible", "--norestore", "--nologo", "--nodefault",
           env.c_str(), accept.c_str(), static_cast<char*>(nullptr));
    _exit(127);
  }
  auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  for (;;) {
    try {
      office_ = Office::Attach(connection_);
      return;
    } catch (const NoOfficeError&) {
      if (std::chrono::steady_clock::now() > deadline) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
  ADD_FAILURE() << "The headless office did not answer within 60 s";
}

void HeadlessOffice::Kill() {
  if (pid_ > 0) {
    kill(-pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    pid_ = -1;
    // A killed office leaves its pipe's file behind.
    std::string name = connection_.substr(connection_.find("name=") + 5);
    std::error_code ec;
    std::filesystem::remove("/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_" + name.substr(0, name.find(';')), ec);
  }
}

void HeadlessOffice::Freeze(bool frozen) {
  if (pid_ > 0) kill(-pid_, frozen ? SIGSTOP : SIGCONT);
}

HeadlessOffice::~HeadlessOffice() {
  // The bridge may be gone: do not run its destructors at exit.
  new std::shared_ptr<Office>(std::move(office_));
  Kill();
  std::error_code ec;
  std::filesystem::remove_all(profile_, ec);
}

void OfficeTest::SetUp() {
  book = office().createWorkbook(hiddenBook());
  ASSERT_TRUE(book);
}

void OfficeTest::TearDown() {
  if (book) book->close();
}

CellBlock Column(std::initializer_list<const char*> cells) {
  CellBlock b;
  b.resize(static_cast<std::int64_t>(cells.size()), 1);
  std::int64_t i = 0;
  for (std::string c : cells) {
    std::string v = c.size() > 2 ? c.substr(2) : "";
    switch (c[0]) {
      case 'n': b.setNumber(i, std::stod(v)); break;
      case 'd': b.setNumber(i, std::stod(v), CellKind::Date); break;
      case 'l': b.setNumber(i, std::stod(v), CellKind::Logical); break;
      case 'h':
      case 't': b.setText(i, v); break;
      default: break;
    }
    ++i;
  }
  return b;
}

}  // namespace qv::testing

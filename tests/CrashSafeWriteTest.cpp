// Writes that are interrupted or cannot finish: a writer killed at any moment, a record
// that cannot be stored, a full disk, a directory that cannot be written or is missing,
// a target that is a directory. The target is always one complete version of the file,
// and the temporaries of dead writers do not pile up.
#include "TestSupport.h"

#include <iof/DbIOFNciLinear.h>
#include <quarp/DbMgr.h>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <random>
#include <string>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// A job of `moves` straight moves.
void FillJob(Quarp::DbMgr& mgr, int moves) {
  for (int i = 0; i < moves; ++i) {
    auto line = IOF::DbIOFNciLinear::Create();
    line->SetEndPoint(IOF::GmPoint3D(i, -i, 0.5 * i));
    line->SetFeedRate(100 + i % 900);
    mgr.Add(line);
  }
}

// How many records the file at `path` loads with; -1 when it does not load.
long LoadedCount(const std::string& path) {
  Quarp::DbMgr mgr;
  return mgr.Read(Quarp::UtString(path.c_str()), true) == Quarp::DbErr::Ok ? static_cast<long>(mgr.GetCount()) : -1;
}

// The files in the directory of `path` other than the target.
int OthersBeside(const std::string& path) {
  int n = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(path).parent_path())) n += entry.path() != path;
  return n;
}

// Runs `write` in a child process (so that it may change its limits or its user) and
// returns the child's exit code.
template <class F>
int InChild(F write) {
  const pid_t pid = ::fork();
  if (pid == 0) ::_exit(write());
  int status = 0;
  ::waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

}  // namespace

// A child writes two versions of a job in turn, over and over, and is killed at a random
// moment; twenty times. After each kill the target loads as one of the two versions;
// the killed writers leave their temporaries, and the next successful Write removes them.
TEST(CrashSafeWrite, AWriterKilledAtAnyMomentLeavesOneCompleteVersion) {
  const std::string path = TestSupport::TempPath("job.iof");
  constexpr int kOld = 20000, kNew = 30000;
  Quarp::DbMgr older, newer;
  FillJob(older, kOld);
  FillJob(newer, kNew);
  ASSERT_EQ(older.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok) << older.GetLastErrorText();

  std::mt19937 rng(7);
  bool leftOne = false;  // a kill landed during a write and left its temporary
  for (int kill = 0; kill < 20; ++kill) {
    const pid_t pid = ::fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      for (int i = 0;; ++i) (i % 2 ? older : newer).Write(Quarp::UtString(path.c_str()));
    }
    ::usleep(2000 + rng() % 60000);
    ::kill(pid, SIGKILL);
    int status = 0;
    ::waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    const long count = LoadedCount(path);
    ASSERT_TRUE(count == kOld || count == kNew) << "after kill " << kill << ": " << count << " records";
    leftOne = leftOne || OthersBeside(path) >= 1;
  }
  // Each writer removes its dead predecessors' temporaries; whether the last kill left
  // one depends on where it landed, so any kill that did counts.
  EXPECT_TRUE(leftOne) << "no kill landed during a write";
  ASSERT_EQ(newer.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok) << newer.GetLastErrorText();
  EXPECT_EQ(OthersBeside(path), 0);
  EXPECT_EQ(LoadedCount(path), kNew);
}

// The temporary of a writer that still runs (here the test's parent process) is not
// touched, nor are another target's temporaries or a file that only looks like one.
TEST(CrashSafeWrite, OnlyTemporariesOfDeadWritersAreRemoved) {
  const std::string path = TestSupport::TempPath("job.iof");
  const std::string dir = fs::path(path).parent_path().string();
  const pid_t dead = ::fork();  // exits at once; its pid runs nothing afterwards
  if (dead == 0) ::_exit(0);
  ::waitpid(dead, nullptr, 0);
  const std::string stale = dir + "/.job.iof.tmp." + std::to_string(dead) + ".3";
  const std::string running = dir + "/.job.iof.tmp." + std::to_string(::getppid()) + ".0";
  const std::string foreign = dir + "/.other.iof.tmp." + std::to_string(dead) + ".0";
  const std::string notOne = dir + "/.job.iof.tmp." + std::to_string(dead) + ".0x";
  for (const auto& p : {stale, running, foreign, notOne}) TestSupport::WriteFile(p, {1});
  Quarp::DbMgr mgr;
  FillJob(mgr, 3);
  ASSERT_EQ(mgr.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok);
  EXPECT_FALSE(fs::exists(stale));
  for (const auto& p : {running, foreign, notOne}) EXPECT_TRUE(fs::exists(p)) << p;
}

// A record that cannot be stored, a missing directory, a full disk (a file size limit), a
// directory that cannot be written, a target that is a directory: a clean error with its
// message, the old file untouched, no temporary left. Then a write that succeeds
// replaces the file in one step and keeps its permissions.
TEST(CrashSafeWrite, WritesThatCannotFinishLeaveTheOldFile) {
  const std::string path = TestSupport::TempPath("job.iof");
  const std::string dir = fs::path(path).parent_path().string();
  Quarp::DbMgr small, big;
  FillJob(small, 10);
  FillJob(big, 20000);
  ASSERT_EQ(small.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok);
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const TestSupport::Bytes before = TestSupport::ReadFile(path);
  fs::create_directories(dir + "/sub/inside");

  // Each write runs in a child, which first makes the write fail; the child's exit code
  // is 1 for the right error, 2 for another error, 3 for a text without `message`.
  struct Case {
    std::string target;
    Quarp::DbErr err;
    const char* message;
    std::function<void()> prepare;
  };
  const Case cases[] = {
      {path, Quarp::DbErr::BadRecord, "record 20001 (TestRecord) could not be stored",
       [&] {
         auto bad = TestSupport::TestRecord::Create();
         bad->m_FailToStore = true;
         big.Add(bad);
       }},
      {dir + "/no-such-dir/job.iof", Quarp::DbErr::Io, "no-such-dir", [] {}},
      {path, Quarp::DbErr::Io, "File too large",
       [] {
         std::signal(SIGXFSZ, SIG_IGN);
         const rlimit limit{64 * 1024, 64 * 1024};
         ::setrlimit(RLIMIT_FSIZE, &limit);
       }},
      {dir + "/sub", Quarp::DbErr::Io, "Is a directory", [] {}},
      // Root may write anywhere: the child becomes an ordinary user first.
      {path, Quarp::DbErr::Io, "Permission denied",
       [&] {
         ::chmod(dir.c_str(), 0555);
         if (::geteuid() == 0 && (::chown(dir.c_str(), 65534, 65534) != 0 || ::setuid(65534) != 0)) ::_exit(4);
       }},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(InChild([&] {
                c.prepare();
                if (big.Write(Quarp::UtString(c.target.c_str())) != c.err) return 2;
                return big.GetLastErrorText().find(c.message) == std::string::npos ? 3 : 1;
              }),
              1)
        << c.message;
    EXPECT_EQ(TestSupport::ReadFile(path), before) << c.message;
    EXPECT_EQ(OthersBeside(path), 1) << c.message;  // the directory sub
  }
  EXPECT_TRUE(fs::exists(dir + "/sub/inside"));
  ASSERT_EQ(::chmod(dir.c_str(), 0755), 0);
  ASSERT_EQ(big.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok) << big.GetLastErrorText();
  struct stat st {};
  ASSERT_EQ(::stat(path.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0640u);
  EXPECT_EQ(LoadedCount(path), 20000);
}

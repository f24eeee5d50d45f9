// Whatever happens, a saved file has either the old or the new contents, and no other file is left.

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "tests/files/AtomicFileFixture.h"
#include "tests/support/FailingNew.h"

namespace {

bool gHasLocks = true;

/// Simulates a network disk that does not support locks.
class WithoutLocks {
 public:
  WithoutLocks() noexcept { gHasLocks = false; }
  ~WithoutLocks() { gHasLocks = true; }
};

/// Saves in memory if there is such a folder, because a killed process does not need a real disk.
class KilledSave : public AtomicFile {
 protected:
  KilledSave() : AtomicFile(::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : fs::temp_directory_path()) {}
};

TEST_F(AtomicFile, IsSavedAndLoaded) {
  const auto model = makeModel(u"Brakes");
  files::save(model, mFile);
  EXPECT_EQ(read(mFile), files::saveText(model));
  EXPECT_EQ(files::saveText(files::load(mFile).model), files::saveText(model));
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

TEST_F(AtomicFile, KeepsItsMode) {
  write("brakes.xmi");
  for (const mode_t mode : {0640U, 0600U, 0664U}) {
    ::chmod(mFile.c_str(), mode);
    files::save(makeModel(u"Brakes"), mFile);
    struct stat found {};
    ::stat(mFile.c_str(), &found);
    EXPECT_EQ(found.st_mode & 07777, mode);
  }
}

TEST_F(AtomicFile, HasTheModeThatTheUserWantsForNewOnes) {
  const mode_t before = ::umask(027);
  files::save(makeModel(u"Brakes"), mFile);
  ::umask(before);
  struct stat found {};
  ::stat(mFile.c_str(), &found);
  EXPECT_EQ(found.st_mode & 07777, 0640U);
}

TEST_F(AtomicFile, StaysWhereASymbolicLinkPoints) {
  fs::create_directory(mFolder / "there");
  fs::create_symlink("there/real.xmi", mFolder / "second");
  fs::create_symlink("second", mFile);
  for (int turn = 0; turn < 2; ++turn) {
    files::save(makeModel(u"Brakes"), mFile);
    EXPECT_TRUE(fs::is_symlink(mFile));
    EXPECT_TRUE(fs::is_symlink(mFolder / "second"));
    EXPECT_TRUE(fs::is_regular_file(mFolder / "there" / "real.xmi"));
  }
  EXPECT_EQ(names(), (Names{"brakes.xmi", "second", "there"}));
}

TEST_F(AtomicFile, SweepsWhatAKilledSaveLeftAndNothingElse) {
  for (const char* name : {".brakes.xmi.01234567.tarvelon-new", ".brakes.xmi.0123456g.tarvelon-new",
                           ".brakes.xmi.0123456.tarvelon-new", "brakes.xmi.01234567.tarvelon-new",
                           ".other.xmi.01234567.tarvelon-new", ".brakes.xmi.01234567.tarvelon-old"})
    write(name);
  files::save(makeModel(u"Brakes"), mFile);
  EXPECT_EQ(names(), (Names{".brakes.xmi.0123456.tarvelon-new", ".brakes.xmi.01234567.tarvelon-old",
                            ".brakes.xmi.0123456g.tarvelon-new", ".other.xmi.01234567.tarvelon-new",
                            "brakes.xmi", "brakes.xmi.01234567.tarvelon-new"}));
}

TEST_F(AtomicFile, MayHaveANameAsLongAsAny) {
  const std::string name = std::string(NAME_MAX - 4, 'n') + ".xmi";
  for (int turn = 0; turn < 2; ++turn) {
    files::save(makeModel(u"Brakes"), mFolder / name);
    EXPECT_EQ(names(), Names{name});
  }
  const std::string left = "." + name.substr(0, NAME_MAX - 23) + ".01234567.tarvelon-new";
  EXPECT_EQ(write(left), "old");
  files::save(makeModel(u"Brakes"), mFolder / name);
  EXPECT_EQ(names(), Names{name});
}

TEST_F(AtomicFile, NeedsNoLocksWhereThereAreNone) {
  write("brakes.xmi");
  {
    const WithoutLocks none;
    files::save(makeModel(u"Brakes"), mFile);
  }
  EXPECT_EQ(names(), Names{"brakes.xmi"});
  EXPECT_EQ(files::load(mFile).problems.count, 0U);
}

TEST_F(AtomicFile, LeavesTheTemporaryFileOfAnotherSaveAlone) {
  write(".brakes.xmi.01234567.tarvelon-new");
  const int other = ::open((mFolder / ".brakes.xmi.01234567.tarvelon-new").c_str(), O_RDWR);
  ASSERT_EQ(::flock(other, LOCK_EX), 0);
  files::save(makeModel(u"Brakes"), mFile);
  EXPECT_EQ(names(), (Names{".brakes.xmi.01234567.tarvelon-new", "brakes.xmi"}));
  ::close(other);
  files::save(makeModel(u"Brakes"), mFile);
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

TEST_F(AtomicFile, SavesOfTwoProcessesAtOnceAllEndWell) {
  std::vector<pid_t> children;
  for (int child = 0; child < 4; ++child) {
    children.push_back(::fork());
    if (children.back() != 0) continue;
    try {
      const auto model = makeModel(child % 2 == 0 ? u"Even" : u"Odd", 50);
      for (int turn = 0; turn < 30; ++turn) files::save(model, mFile, {nullptr, false});
    } catch (...) {
      ::_exit(1);
    }
    ::_exit(0);
  }
  for (const pid_t child : children) {
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  const std::string text = read(mFile);
  EXPECT_TRUE(text == files::saveText(makeModel(u"Even", 50)) ||
              text == files::saveText(makeModel(u"Odd", 50)));
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

TEST_F(AtomicFile, StaysAsItIsWhenTheDiskIsFull) {
  const std::string old = write("brakes.xmi");
  // A limit on the size of files causes the same failure as a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{100000, RLIM_INFINITY};
  ::setrlimit(RLIMIT_FSIZE, &small);
  const std::string refusal = refusalOfSave(mFile, makeModel(u"Brakes", 10000));
  const rlimit none{RLIM_INFINITY, RLIM_INFINITY};
  ::setrlimit(RLIMIT_FSIZE, &none);
  EXPECT_EQ(refusal, "cannot save '" + mFile.string() +
                         "': writing failed (File too large); an existing file is unchanged");
  EXPECT_EQ(read(mFile), old);
  EXPECT_EQ(names(), Names{"brakes.xmi"});
  if (fs::exists("/dev/full")) {
    EXPECT_NE(refusalOfSave("/dev/full", makeModel(u"Brakes")).find("the path is not a regular file"),
              std::string::npos);
  }
}

TEST_F(AtomicFile, SaysThatThereIsNoSuchFolder) {
  EXPECT_EQ(refusalOfSave(mFolder / "gone" / "brakes.xmi", makeModel(u"Brakes")),
            "cannot save '" + (mFolder / "gone" / "brakes.xmi").string() +
                "': no temporary file can be created in its folder (No such file or directory); an existing "
                "file is unchanged");
  EXPECT_NE(refusalOfSave(mFolder, makeModel(u"Brakes")).find("the path is a folder (Is a directory)"),
            std::string::npos);
  EXPECT_NE(refusalOfSave("", makeModel(u"Brakes")).find("the path has no file name"), std::string::npos);
}

TEST_F(AtomicFile, StaysAsItIsWhereNothingMayBeWritten) {
  const std::string old = write("brakes.xmi");
  ::chmod(mFile.c_str(), 0444);
  ::chmod(mFolder.c_str(), 0555);
  {
    const AsNobody nobody;
    ASSERT_FALSE(nobody.hasFailed());
    EXPECT_EQ(refusalOfSave(mFile, makeModel(u"Brakes")),
              "cannot save '" + mFile.string() +
                  "': the file is not writable (Permission denied); an existing file is unchanged");
    EXPECT_EQ(refusalOfSave(mFolder / "new.xmi", makeModel(u"Brakes")),
              "cannot save '" + (mFolder / "new.xmi").string() +
                  "': no temporary file can be created in its folder (Permission denied); an existing file "
                  "is unchanged");
  }
  EXPECT_EQ(read(mFile), old);
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

TEST_F(AtomicFile, LiesWhereItsPathLedAtTheBeginning) {
  fs::create_directory(mFolder / "elsewhere");
  const fs::path before = fs::current_path();
  fs::current_path(mFolder);
  const auto leave = [this](double) { fs::current_path(mFolder / "elsewhere"); };
  files::save(makeModel(u"Brakes", 20000), "brakes.xmi", {leave, true});
  EXPECT_EQ(fs::current_path(), mFolder / "elsewhere");
  fs::current_path(mFolder);
  const auto leaveAndEnd = [this](double) {
    fs::current_path(mFolder / "elsewhere");
    throw std::runtime_error("enough");
  };
  EXPECT_THROW(files::save(makeModel(u"Other", 20000), "brakes.xmi", {leaveAndEnd, true}),
               std::runtime_error);
  fs::current_path(before);
  EXPECT_EQ(names(), (Names{"brakes.xmi", "elsewhere"}));
  EXPECT_TRUE(fs::is_empty(mFolder / "elsewhere"));
  EXPECT_EQ(read(mFile), files::saveText(makeModel(u"Brakes", 20000)));
}

TEST_F(AtomicFile, IsNotSavedUnderTheNameOfAnotherFormat) {
  const auto model = makeModel(u"Brakes");
  EXPECT_EQ(refusalOf<K7Q::WrongValue>([&] { files::save(model, mFolder / "brakes.json"); }),
            "cannot save '" + (mFolder / "brakes.json").string() +
                "': expected the suffix '.arxml' or '.xmi', got '.json'; name the file '" +
                (mFolder / "brakes.arxml").string() + "' or '" + mFile.string() + "', or give it no suffix");
  for (const char* name : {"brakes.xmi.gz", "brakes.xml", "brakes.2"})
    EXPECT_THROW(files::save(model, mFolder / name), K7Q::WrongValue) << name;
  EXPECT_THROW(files::saveEcore(mFolder / "tarvelon.xmi"), K7Q::WrongValue);
  EXPECT_EQ(names(), Names{});
  for (const char* name : {"BRAKES.XMI", "brakes", ".xmi", "brakes."}) files::save(model, mFolder / name);
  EXPECT_EQ(names().size(), 4U);
}

TEST_F(AtomicFile, StaysAsItIsWhenTheSaveIsCancelled) {
  const std::string old = write("brakes.xmi");
  const auto cancel = [](double) { throw std::runtime_error("enough"); };
  EXPECT_THROW(files::save(makeModel(u"Brakes"), mFile, {cancel, true}), std::runtime_error);
  EXPECT_EQ(read(mFile), old);
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

/// A number from the environment, so that the test can do more when it is run by hand.
int numberOf(const char* variable, int usual) {
  const char* text = std::getenv(variable);
  return text ? std::atoi(text) : usual;
}

/// Saves the two models alternately until the process is killed in its `save`th save, when the progress
/// reaches `point`: by itself, or by the process that reads the pipe. So the place of the kill does not
/// depend on time.
[[noreturn]] void saveUntilKilled(const K7Q::Model& first, const K7Q::Model& second, const fs::path& path,
                                  int save, double point, int pipe) {
  for (int number = 0;; ++number) {
    const files::Progress progress = [&](double done) {
      if (number != save || done < point) return;
      if (pipe < 0) ::raise(SIGKILL);
      if (::write(pipe, "x", 1) != 1) ::_exit(1);
    };
    files::save(number % 2 == 0 ? second : first, path, {progress, true});
  }
}

/// What was found after the kills.
struct Outcome {
  int first = 0;
  int second = 0;
  int interrupted = 0;  ///< with a temporary file beside it
};

TEST_F(KilledSave, LeavesAWholeFileHoweverOftenItHappens) {
  const int kills = numberOf("TARVELON_KILLS", 20);
  const int megabytes = numberOf("TARVELON_KILL_MEGABYTES", 5);
  const auto first = makeModel(u"First", 16500 * megabytes);
  const auto second = makeModel(u"Second", 16500 * megabytes);
  const std::string one = files::saveText(first);
  const std::string other = files::saveText(second);
  EXPECT_GT(one.size(), 1000000U * static_cast<unsigned>(megabytes));
  files::save(second, mFile);
  unsigned seed = 1;
  Outcome outcome;
  for (int turn = 0; turn < kills; ++turn) {
    // Some processes are killed in their first save, others in a later one. Every second process kills itself
    // at a point of writing; the others are killed from outside after all data was written.
    const bool isKilledFromOutside = turn % 2 == 1;
    const int save = ::rand_r(&seed) % 3;
    const double point = isKilledFromOutside ? 0.97 : ::rand_r(&seed) % 97 / 100.0;
    int ends[2] = {-1, -1};
    if (isKilledFromOutside) {
      ASSERT_EQ(::pipe(ends), 0);
    }
    const pid_t child = ::fork();
    if (child == 0) saveUntilKilled(first, second, mFile, save, point, ends[1]);
    if (isKilledFromOutside) {
      ::close(ends[1]);
      char begun = 0;
      EXPECT_EQ(::read(ends[0], &begun, 1), 1);
      ::kill(child, SIGKILL);
      ::close(ends[0]);
    }
    ::waitpid(child, nullptr, 0);
    const std::string found = read(mFile);
    EXPECT_TRUE(found == one || found == other) << found.size();
    EXPECT_LE(names().size(), 2U) << "the saves before it must have swept";
    ++(found == one ? outcome.first : outcome.second);
    outcome.interrupted += names().size() == 2 ? 1 : 0;
  }
  std::cout << kills << " kills of saves of " << one.size() << " bytes: " << outcome.interrupted
            << " in the middle of a file; then the file was " << outcome.first << " times the one and "
            << outcome.second << " times the other\n";
  EXPECT_GE(outcome.interrupted, kills / 2) << "those that were killed at a point";
  files::save(first, mFile);
  EXPECT_EQ(names(), Names{"brakes.xmi"});
}

TEST_F(AtomicFile, StaysAsItIsWhateverAllocationFails) {
  const auto model = makeModel(u"Brakes", 3);
  const std::string old = write("brakes.xmi");
  fs::create_symlink("brakes.xmi", mFolder / "link");
  const int failures = failing::eachAllocation([&] { write(".brakes.xmi.01234567.tarvelon-new"); },
                                               [&] { files::save(model, mFolder / "link"); },
                                               [&](std::size_t n) {
                                                 EXPECT_EQ(read(mFile), old) << n;
                                                 EXPECT_LE(names().size(), 3U) << n;
                                               });
  EXPECT_GT(failures, 20);
  EXPECT_EQ(read(mFile), files::saveText(model));
  EXPECT_EQ(names(), (Names{"brakes.xmi", "link"}));
}

TEST_F(AtomicFile, ThatIsNotThereCannotBeLoaded) {
  EXPECT_EQ(refusalOf<files::FileError>([&] { files::load(mFile); }),
            "cannot load '" + mFile.string() + "': No such file or directory");
  EXPECT_EQ(refusalOf<K7Q::WrongValue>([&] { files::load(mFolder); }),
            "cannot load '" + mFolder.string() + "': the folder has no file with the suffix .arxml");
}

}  // namespace

// Replaces the system's function.
extern "C" __attribute__((visibility("default"))) int flock(int descriptor, int operation) noexcept {
  if (gHasLocks) return static_cast<int>(::syscall(SYS_flock, descriptor, operation));
  errno = ENOLCK;
  return -1;
}

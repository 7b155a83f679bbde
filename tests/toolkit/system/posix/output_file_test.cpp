#include "toolkit/system/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::readFile;
using testing::TemporaryFiles;

Monitor monitor;  // watches nothing

/// Gives up when asked once more than `patience` times.
class Impatient : public Monitor {
 public:
  explicit Impatient(int patience) : patience_(patience) {}
  void ThrowIfStopped() override {
    if (patience_-- == 0) throw Interrupted(1);
  }

 private:
  int patience_;
};

/// The path of a new named pipe.
std::string makePipe(const TemporaryFiles& files) {
  std::string path = files.Path("pipe");
  EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
  return path;
}

std::size_t filesIn(const std::string& directory) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    count += entry.path().filename().string().front() == '.' ? 0 : 1;  // the directory's own lock
  }
  return count;
}

TEST(OutputFile, AppearsWhenCommitted) {
  const TemporaryFiles files;
  const std::string path = files.Path("out");
  OutputFile file(path, monitor);
  file.Write("new");
  EXPECT_FALSE(std::filesystem::exists(path));
  file.Commit();
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(filesIn(files.Directory()), 1U);
}

TEST(OutputFile, AFileNamedAfterTheProcessIsNotInTheWay) {
  const TemporaryFiles files;
  files.Write("out." + std::to_string(::getpid()) + ".tmp", "planted");
  OutputFile file(files.Path("out"), monitor);
  file.Write("new");
  file.Commit();
  EXPECT_EQ(readFile(files.Path("out")), "new");
  EXPECT_EQ(filesIn(files.Directory()), 2U);
}

TEST(OutputFile, AForkedChildRemovesNothing) {
  const TemporaryFiles files;
  OutputFile file(files.Path("out"), monitor);
  file.Write("new");
  const pid_t child = ::fork();
  if (child == 0) {
    file.~OutputFile();
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
  file.Commit();
  EXPECT_EQ(readFile(files.Path("out")), "new");
}

TEST(OutputFile, WithoutCommitTheOlderFileStays) {
  const TemporaryFiles files;
  const std::string path = files.Write("out", "old");
  { OutputFile(path, monitor).Write("new"); }
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(filesIn(files.Directory()), 1U);
}

TEST(OutputFile, ALinkStaysAndItsTargetIsReplaced) {
  const TemporaryFiles files;
  std::filesystem::create_directory(files.Path("elsewhere"));
  const std::string target = files.Path("elsewhere/out");
  const std::string link = files.Path("link");
  std::filesystem::create_symlink("elsewhere/out", files.Path("inner"));
  std::filesystem::create_symlink(files.Path("inner"), link);
  for (const char* const content : {"made", "replaced"}) {
    OutputFile file(link, monitor);
    file.Write(content);
    file.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(readFile(target), content);
    EXPECT_EQ(filesIn(files.Path("elsewhere")), 1U);
  }
}

TEST(OutputFile, LinksInACircleAreRefused) {
  const TemporaryFiles files;
  std::filesystem::create_symlink("b", files.Path("a"));
  std::filesystem::create_symlink("a", files.Path("b"));
  EXPECT_EQ(messageOf<DataError>([&] { OutputFile(files.Path("a"), monitor); }),
            "cannot write " + files.Path("a") + ": Too many levels of symbolic links");
}

TEST(OutputFile, AReplacedFileKeepsModeAndOwner) {
  const TemporaryFiles files;
  const std::string path = files.Write("out", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const bool mayGiveAway = ::geteuid() == 0;
  if (mayGiveAway) {
    ASSERT_EQ(::chown(path.c_str(), 12, 34), 0);
  }
  OutputFile file(path, monitor);
  file.Write("new");
  file.Commit();
  struct stat status = {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_EQ(status.st_uid, mayGiveAway ? 12U : ::geteuid());
  if (mayGiveAway) {
    EXPECT_EQ(status.st_gid, 34U);
  }
  EXPECT_EQ(readFile(path), "new");
}

TEST(OutputFile, WritesSpecialFilesDirectly) {
  OutputFile file("/dev/null", monitor);
  file.Write("x");
  file.Commit();
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(OutputFile, APipeWithoutAReaderCanBeGivenUp) {
  const TemporaryFiles files;
  const std::string pipe = makePipe(files);
  Impatient impatient(2);
  EXPECT_THROW(OutputFile(pipe, impatient), Interrupted);
}

TEST(OutputFile, AFullPipeCanBeGivenUp) {
  const TemporaryFiles files;
  const std::string pipe = makePipe(files);
  const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  Impatient impatient(20);  // a pipe holds 16 pages
  OutputFile file(pipe, impatient);
  EXPECT_THROW(file.Write(std::string(200'000, 'x')), Interrupted);
  ::close(reader);
}

TEST(OutputFile, APipeGetsEverything) {
  const TemporaryFiles files;
  const std::string pipe = makePipe(files);
  const std::string text(300'000, 'x');
  const pid_t child = ::fork();
  if (child == 0) {
    ::_exit(readFile(pipe) == text ? 0 : 1);
  }
  OutputFile file(pipe, monitor);
  file.Write(text);
  file.Write("");
  file.Commit();
  int status = -1;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST(OutputFile, AClosedStandardOutputDoesNotKeepAFileFromItsName) {
  const TemporaryFiles files;
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(STDOUT_FILENO);
    OutputFile file(files.Path("out"), monitor);
    file.Write("new");
    file.Commit();
    ::_exit(0);
  }
  ::waitpid(child, nullptr, 0);
  EXPECT_EQ(readFile(files.Path("out")), "new");
}

TEST(OutputFile, FailuresNameThePath) {
  EXPECT_EQ(messageOf<DataError>([] { OutputFile("/nonexistent/out", monitor); }),
            "cannot write /nonexistent/out: No such file or directory");
  EXPECT_EQ(messageOf<DataError>([] {
              OutputFile file("/dev/full", monitor);
              file.Write("x");
              file.Commit();
            }),
            "cannot write /dev/full: No space left on device");
}

}  // namespace
}  // namespace mcbin

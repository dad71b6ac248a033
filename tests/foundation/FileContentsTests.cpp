#include "platform/foundation/FileContents.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "platform/foundation/FileDescriptor.h"
#include "support/FileBytes.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

class WritingAFile : public testing::Test {
  protected:
    std::error_code write(const fs::path& file, FileAccess access = FileAccess::kByUmask) const {
        const std::string text = "new";
        return writeFileAtomically(file, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), 3),
                                   access);
    }

    static unsigned modeOf(const fs::path& file) {
        return static_cast<unsigned>(fs::status(file).permissions());
    }

    TemporaryDirectory directory_;
    const fs::path file_ = directory_.path() / "file";
};

TEST_F(WritingAFile, GivesItTheModeOfItsKind) {
    const mode_t before = umask(027);
    EXPECT_EQ(write(file_), std::error_code());
    umask(before);
    EXPECT_EQ(modeOf(file_), 0640u);
    fs::permissions(file_, fs::perms(0604));
    EXPECT_EQ(write(file_), std::error_code());
    EXPECT_EQ(modeOf(file_), 0604u);
    EXPECT_EQ(write(file_, FileAccess::kOwnerOnly), std::error_code());
    EXPECT_EQ(modeOf(file_), 0600u);
    EXPECT_EQ(fileBytes(file_), "new");
}

TEST_F(WritingAFile, WritesIntoWhatIsNoRegularFile) {
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    const FileDescriptor reader(open(file_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_EQ(write(file_), std::error_code());
    char text[8] = {};
    EXPECT_EQ(read(reader.get(), text, sizeof text), 3);
    EXPECT_EQ(std::string(text), "new");
    EXPECT_TRUE(fs::is_fifo(file_));
    EXPECT_EQ(write(directory_.path()), std::errc::is_a_directory);
}

// As a shell's ">>" opens it.
TEST_F(WritingAFile, AddsToTheFileOfAnOpenDescriptor) {
    writeFileBytes(file_, "old ");
    const FileDescriptor log(open(file_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
    EXPECT_EQ(write("/dev/fd/" + std::to_string(log.get())), std::error_code());
    EXPECT_EQ(fileBytes(file_), "old new");
}

TEST_F(WritingAFile, FollowsLinksToTheirEnd) {
    fs::create_directory(directory_.path() / "there");
    fs::create_symlink("there/file", file_);
    const fs::path outer = directory_.path() / "outer";
    fs::create_symlink("file", outer);
    EXPECT_EQ(write(outer), std::error_code());
    EXPECT_TRUE(fs::is_symlink(file_) && fs::is_symlink(outer));
    EXPECT_EQ(fileBytes(directory_.path() / "there" / "file"), "new");
    const fs::path circle = directory_.path() / "circle";
    fs::create_symlink("circle", circle);
    EXPECT_EQ(write(circle), std::errc::too_many_symbolic_link_levels);
}

}  // namespace
}  // namespace corvane

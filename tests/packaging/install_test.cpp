// Where the tree is built, and what `cmake --install` puts where.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

using Files = std::set<std::string>;

// The files below a directory, by their paths from there.
Files files_below(const std::string& directory) {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (!entry.is_directory()) files.insert(entry.path().lexically_relative(directory));
    }
    return files;
}

const Files program_and_man_page = {"bin/teluma-wizard", "share/man/man8/teluma-wizard.8"};

TEST(Install, puts_the_program_and_its_man_page_below_any_prefix) {
    const TempDir prefix;
    const CommandResult result =
        run_command({CMAKE_PROGRAM, "--install", BUILD_DIRECTORY, "--prefix", prefix.path()});
    ASSERT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(files_below(prefix.path()), program_and_man_page);
    EXPECT_EQ(file_facts(prefix / "bin/teluma-wizard").mode, 0755U);
    EXPECT_EQ(read_file(prefix / "share/man/man8/teluma-wizard.8"),
              read_file(SOURCES "/docs/teluma-wizard.8"));
}

TEST(Install, puts_them_beside_the_server_by_default) {
    const TempDir root;
    const CommandResult result =
        run_command({CMAKE_PROGRAM, "--install", BUILD_DIRECTORY}, {{"DESTDIR", root.path()}});
    ASSERT_EQ(result.status, exited(0)) << result.err;
    EXPECT_EQ(files_below(root / INSTALL_PREFIX), program_and_man_page);
}

TEST(Build, among_the_sources_is_refused_with_the_way_that_works) {
    const TempDir sources;
    std::filesystem::copy(SOURCES "/CMakeLists.txt", sources.path());
    const CommandResult result =
        run_command({CMAKE_PROGRAM, "-S", sources.path(), "-B", sources.path()});
    EXPECT_EQ(result.status, exited(1));
    EXPECT_NE(result.err.find("\n    cmake -S . -B build && cmake --build build\n"),
              std::string::npos)
        << result.err;
}

}  // namespace

// What the server's user, who may own the directories of the server's files, puts in their place.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "apply/relay_filter.h"
#include "apply/sendmail_install.h"
#include "apply/server_config.h"
#include "tests/apply/apply_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"

namespace {

using std::filesystem::path;

constexpr const char* content = "root:secret\nservices = ( a )\n";

constexpr int first_network = 0;

// A change of names that comes just before something of this name is opened.
struct Exchange {
    std::string name;
    std::function<void()> change;
} exchange;

// A file of the server's, and what rewrites it or gives it away.
struct ServersFile {
    const char* name;
    const char* path;
    int (*step)();
    int failure;  // what the step returns
};

constexpr ServersFile configuration = {"configuration", InstalledServer::config,
                                       [] { return config_prepare(InstalledServer::config); }, 1};
constexpr ServersFile filters = {"filters_script", InstalledServer::filters,
                                 [] { return relay_write_filter(&first_network, 1); }, 1};
constexpr ServersFile wrapper = {"wrapper", "/opt/teluma/bin/sendmail",
                                 [] { return sendmail_install(1); }, -1};

class Planted : public InstalledServerCase, public testing::WithParamInterface<ServersFile> {
  protected:
    // The file's directory belongs to the server's user, who can't write beside the victim.
    void SetUp() override {
        if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
        logIn();
        std::filesystem::create_directory(victim.parent_path());
        write_file(victim, content, 0600);
        own(directory);
        own(directory.parent_path());
    }

    static void own(const path& owned) { chown(owned.c_str(), server_user(), server_user()); }

    // By the server's user.
    template <class Piece>
    static void plant(Piece piece) {
        EXPECT_EQ(as_user(server_user(), [&] { _exit(piece() ? 0 : 1); }), exited(0));
    }

    void plantLink() const {
        plant([&] {
            return unlink(file.c_str()) == 0 && symlink(victim.c_str(), file.c_str()) == 0;
        });
    }

    void plantLinkToDirectory() const {
        plant([&] {
            return rename(directory.c_str(), (directory.string() + ".old").c_str()) == 0 &&
                   symlink(victim.parent_path().c_str(), directory.c_str()) == 0;
        });
    }

    // By the superuser, in a directory of this owner and mode.
    void putLink(uid_t owner, mode_t mode) const {
        chown(directory.c_str(), owner, server_user());
        chmod(directory.c_str(), mode);
        unlink(file.c_str());
        ASSERT_EQ(symlink(("../../private" / file.filename()).c_str(), file.c_str()), 0);
    }

    // As the server's user can't where fs.protected_hardlinks is set.
    void putSecondName(uid_t owner) const {
        chown(directory.c_str(), owner, owner);
        unlink(file.c_str());
        ASSERT_EQ(link(victim.c_str(), file.c_str()), 0);
    }

    void expectRefused() const {
        EXPECT_EQ(GetParam().step(), GetParam().failure);
        expectVictimUntouched();
        EXPECT_FALSE(exists("temp.cfg"));
    }

    void expectVictimUntouched() const {
        EXPECT_EQ(read_file(victim), content);
        EXPECT_EQ(file_facts(victim).owner, 0u);
        EXPECT_EQ(file_facts(victim).mode, 0600u);
    }

    void expectDone() const {
        EXPECT_EQ(GetParam().step(), 0);
        EXPECT_TRUE(read_file(victim) != content || file_facts(victim).owner == server_user());
    }

    const path file = GetParam().path;
    const path directory = file.parent_path();
    // On the same file system, of the same name.
    const path victim = directory.parent_path().parent_path() / "private" / file.filename();
};

TEST_P(Planted, link_to_a_file_of_roots_is_not_followed) {
    plantLink();
    expectRefused();
}

TEST_P(Planted, link_in_the_place_of_the_directory_is_not_followed) {
    plantLinkToDirectory();
    expectRefused();
}

TEST_P(Planted, link_that_comes_between_the_look_and_the_open_is_not_followed) {
    exchange = {file.filename(), [this] { plantLink(); }};
    expectRefused();
}

TEST_P(Planted, link_to_a_directory_that_comes_between_the_look_and_the_open_is_not_followed) {
    exchange = {directory.filename(), [this] { plantLinkToDirectory(); }};
    expectRefused();
}

TEST_P(Planted, link_is_followed_only_if_it_is_roots_and_only_root_writes_beside_it) {
    putLink(server_user(), 0755);
    expectRefused();
    for (const mode_t mode : {0775, 0757}) {
        putLink(0, mode);
        expectRefused();
    }
    putLink(0, 0755);
    ASSERT_EQ(lchown(file.c_str(), server_user(), server_user()), 0);
    expectRefused();
    putLink(0, 0755);
    expectDone();
}

TEST_P(Planted, second_name_of_a_file_is_taken_in_a_directory_of_roots_only) {
    putSecondName(server_user());
    expectRefused();
    putSecondName(0);
    expectDone();
}

TEST_P(Planted, file_of_the_servers_user_in_its_own_directory_is_taken) {
    own(file);
    EXPECT_EQ(GetParam().step(), 0);
    EXPECT_EQ(file_facts(file).owner, server_user());
}

INSTANTIATE_TEST_SUITE_P(InPlaceOf, Planted, testing::Values(configuration, filters, wrapper),
                         CaseName());

// The file is exchanged when the command that copies over it has been started.
class Swapped : public Planted {
  protected:
    void SetUp() override {
        // See landlock(7).
        if (syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) < 1)
            GTEST_SKIP() << "a kernel that can't keep a command from other files";
        Planted::SetUp();
    }

    static void putCommand(const std::string& script) {
        std::filesystem::create_directory("bin");
        write_file("bin/cp", "#!/bin/sh\n" + script, 0755);
        const std::string found_first = std::filesystem::current_path() / "bin:";
        setenv("PATH", (found_first + getenv("PATH")).c_str(), 1);
    }

    // Names are changed as by the server's user while the command waits, before it copies and after
    // it: each pipe is opened by both at the same time.
    static void swapBefore(const std::string& swap, const std::string& swap_back = ":") {
        putCommand("cat now done\n/bin/cp \"$@\"\ncat now done\n");
        const std::string both =
            ": >now; " + swap + "; : >done; : >now; " + swap_back + "; : >done";
        ASSERT_EQ(std::system(("mkfifo now done; (" + both + ") &").c_str()), 0);
    }
};

TEST_P(Swapped, for_a_link_to_a_file_of_roots_the_step_fails) {
    swapBefore("ln -sf " + victim.string() + " " + file.string());
    expectRefused();
}

TEST_P(Swapped, for_a_link_to_a_directory_of_roots_nothing_is_made_in_it) {
    swapBefore("ln -sf " + victim.parent_path().string() + " " + file.string());
    expectRefused();
    EXPECT_FALSE(exists(victim.parent_path() / "temp.cfg"));
}

TEST_P(Swapped, and_back_again_nothing_else_is_written_to) {
    const std::string away = "mv " + file.string() + " " + file.string() + ".away";
    swapBefore(away + " && ln -s " + victim.string() + " " + file.string(),
               "mv " + file.string() + ".away " + file.string());
    EXPECT_EQ(GetParam().step(), 0);
    expectVictimUntouched();
}

TEST_P(Swapped, for_a_pipe_the_command_waits_for_nobody) {
    swapBefore("rm " + file.string() + " && mkfifo " + file.string());
    EXPECT_EQ(GetParam().step(), GetParam().failure);
}

// As a BusyBox does that is built for it.
TEST_P(Swapped, by_a_command_that_removes_it_first_it_stays) {
    const std::string before = read_file(file);
    putCommand("rm -f \"$2\" && cat \"$1\" >\"$2\"\n");
    EXPECT_EQ(GetParam().step(), 0);
    EXPECT_EQ(read_file(file), before);
}

INSTANTIATE_TEST_SUITE_P(BeforeTheCopy, Swapped, testing::Values(configuration, filters),
                         CaseName());

}  // namespace

// In the place of the C library's.
extern "C" int openat(int directory, const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (exchange.change && exchange.name == name) std::exchange(exchange.change, nullptr)();
    return static_cast<int>(syscall(SYS_openat, directory, name, flags, mode));
}

// A server that never comes to an end: the wizard stays as small as it was, Ctrl-C ends it, and
// nothing of what it is told reaches the screen.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include "tests/e2e/apply_decoy.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/support/case_name.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"
#include "tests/support/local_port.h"
#include "tests/support/wait_until.h"

namespace {

// What a server never stops saying.
struct EndlessAnswer {
    std::string name;
    std::string command;  // at which it begins: one that begins so; empty: the greeting
    std::string start;    // once
    std::string repeated;
};

// A server at the port that the sample configuration names. It agrees to every command but one, to
// which its answer does not end before the connection does. It serves one client.
class EndlessServer {
  public:
    explicit EndlessServer(EndlessAnswer answer) : endless(std::move(answer)) {
        port.open("127.0.0.1");
        server = std::thread(&EndlessServer::serve, this);
    }

    ~EndlessServer() {
        end.write_end.close();
        server.join();
    }
    EndlessServer(const EndlessServer&) = delete;
    EndlessServer& operator=(const EndlessServer&) = delete;

  private:
    void serve() {
        while (client.get() == -1) {
            constexpr int milliseconds = 10;
            pollfd closed{end.read_end.get(), POLLIN, 0};
            if (poll(&closed, 1, milliseconds) != 0) return;
            client = port.takeConnection();
        }
        // It was taken as one that never waits.
        fcntl(client.get(), F_SETFL, 0);
        bool connected = endless.command.empty() ? talk() : say("> ");
        std::string command;
        char byte = 0;
        while (connected && recv(client.get(), &byte, 1, 0) == 1) {
            command += byte;
            if (byte == '\n') connected = answer(std::exchange(command, ""));
        }
        client.close();
    }

    bool answer(const std::string& command) const {
        const std::string& wanted = endless.command;
        return command.compare(0, wanted.size(), wanted) == 0 ? talk() : say("+OK: done\r\n> ");
    }

    // Ends with the connection.
    bool talk() const {
        constexpr std::size_t block_size = 4096;
        std::string block;
        while (block.size() < block_size) block += endless.repeated;
        bool connected = say(endless.start);
        while (connected) connected = say(block);
        return false;
    }

    bool say(const std::string& bytes) const {
        return send(client.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }

    const EndlessAnswer endless;
    LocalPort port{9091};
    Pipe end = make_pipe();  // closed at this side: there is nobody to wait for any more
    Descriptor client;
    std::thread server;
};

// With an address sanitizer that gives back at once what was freed.
class EagerSanitizer {
  protected:
    EagerSanitizer() {
        const char* options = getenv("ASAN_OPTIONS");
        const std::string eager = std::string(options != nullptr ? options : "") +
                                  ":quarantine_size_mb=0:thread_local_quarantine_size_kb=0";
        setenv("ASAN_OPTIONS", eager.c_str(), 1);
    }
};

class Endless : private EagerSanitizer,
                public ApplyTest,
                public testing::WithParamInterface<EndlessAnswer> {
  protected:
    Endless() {
        askForLittle();
        server.replaceBy("case $1 in -A) exit; esac\necho " + std::to_string(decoy.pid()) + " >" +
                         InstalledServer::pid_file);
    }

    // The number after a name in a file of the wizard's in /proc, as "VmRSS:" in its status.
    long fact(const std::string& file, const std::string& name) const {
        std::istringstream words(read_file("/proc/" + std::to_string(wizard.pid()) + "/" + file));
        std::string word;
        while (words >> word && word != name) continue;
        long number = 0;
        words >> number;
        return number;
    }

    void waitUntilRead(long bytes) const {
        const long before = fact("io", "rchar:");
        wait_until([&] { return fact("io", "rchar:") - before > bytes; }, "the wizard had read on");
    }

    const Decoy decoy;
    const EndlessServer peer{GetParam()};
};

TEST_P(Endless, talk_makes_the_wizard_no_larger_and_is_ended_by_ctrl_c) {
    // A line is a few bytes; one that was kept would take 16 at least.
    constexpr long bytes = 300000;
    constexpr long most_kilobytes = 1000;
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Operations pending");
    waitUntilRead(bytes);
    const long before = fact("status", "VmRSS:");
    waitUntilRead(bytes);
    EXPECT_LT(fact("status", "VmRSS:") - before, most_kilobytes);
    EXPECT_TRUE(wizard.image().shows("Operations pending"));
    wizard.press(Key::ctrl_c);
    EXPECT_TRUE(is_aborted(wizard));
    EXPECT_EQ(wizard.output().find(GetParam().repeated), std::string::npos);
    decoy.waitForSignals(1);
}

const EndlessAnswer endless_answers[] = {
    {"of_lines_in_the_greeting", "", "", "g\r\n"},
    {"of_lines_in_a_reply", "create domain", "", "l\r\n"},
    {"of_escape_sequences", "create domain", "", "\x1b[2J\x1b[31m\r\n"},
    {"of_rows_in_a_listener_table", "list listeners", "-----\r\n", "1|\r\n"},
    {"of_services", "show attr services", "", "services\r\n"},
    {"of_bytes_that_make_no_line", "create domain", "", "\r\r"},
};

INSTANTIATE_TEST_SUITE_P(Server, Endless, testing::ValuesIn(endless_answers), CaseName());

}  // namespace

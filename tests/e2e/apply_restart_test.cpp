// The server is stopped, given the password, switched on in its configuration, started again and
// found where that configuration says.

#include <gtest/gtest.h>

#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/apply_wire.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

class ApplyRestart : public ApplyTest {
  protected:
    ApplyRestart() { askForLittle(); }

    /// The log's lines about the server's life and the password, without the process ids.
    std::vector<std::string> life() const {
        std::vector<std::string> lines;
        for (const std::string& line : server.log()) {
            if (line.rfind("-A ", 0) == 0 || line == "# stopped")
                lines.push_back(line);
            else if (line.rfind("# started", 0) == 0)
                lines.push_back("# started" + line.substr(line.rfind(',')));
        }
        return lines;
    }

    static void replaceInConfig(const std::string& part, const std::string& by) {
        std::string text = read_file(InstalledServer::config);
        const size_t at = text.find(part);
        ASSERT_NE(at, std::string::npos) << part;
        write_file(InstalledServer::config, text.replace(at, part.size(), by));
    }
};

const char* const password_set = "-A Adm1n secret";
const char* const listening = "# started, listening at 127.0.0.1:9091";
const char* const not_listening = "# started, listening at no address";

TEST_F(ApplyRestart, sets_the_password_at_once_when_no_server_runs) {
    runThrough();
    server.waitForEnd();
    EXPECT_EQ(life(), (std::vector<std::string>{password_set, listening, "# stopped"}));
}

TEST_F(ApplyRestart, stops_a_running_server_before_it_sets_the_password) {
    server.start();
    const pid_t before = server.pid();
    runThrough();
    server.waitForEnd();
    EXPECT_EQ(life(), (std::vector<std::string>{not_listening, "# stopped", password_set, listening,
                                                "# stopped"}));
    EXPECT_FALSE(process_running(before));
}

TEST_F(ApplyRestart, waits_for_a_server_that_takes_its_time_to_stop) {
    server.faults("stop 1 stays 2.5\n");
    server.start();
    runThrough();
    server.waitForEnd();
    EXPECT_EQ(life(), (std::vector<std::string>{not_listening, "# stopped", password_set, listening,
                                                "# stopped"}));
}

TEST_F(ApplyRestart, waits_for_the_pid_file_of_the_new_server_and_stops_it_at_the_end) {
    server.faults("start 1 late 1.5\n");
    runThrough();
    server.waitForEnd();
    EXPECT_EQ(life(), (std::vector<std::string>{password_set, listening, "# stopped"}));
}

TEST_F(ApplyRestart, keeps_to_the_pid_that_it_knows_when_the_new_server_has_no_pid_file) {
    server.start();
    server.faults("start * missing\n");
    runThrough();
    EXPECT_TRUE(server.isRunning());
    EXPECT_EQ(life(),
              (std::vector<std::string>{not_listening, "# stopped", password_set, listening}));
}

TEST_F(ApplyRestart, leaves_a_configuration_that_names_the_cli_service_byte_for_byte) {
    replaceInConfig("processing webadmin )", "processing\twebadmin cli)");
    const std::string before = read_file(InstalledServer::config);
    runThrough();
    EXPECT_EQ(read_file(InstalledServer::config), before);
}

TEST_F(ApplyRestart, finds_the_server_where_the_first_uncommented_address_of_its_cli_section_says) {
    replaceInConfig("address\t=  127.0.0.1:9091", "address = 192.168.7.2:9191");
    runThrough();
    const std::vector<std::string> lines = life();
    EXPECT_EQ(lines.at(1), "# started, listening at 192.168.7.2:9191");
    EXPECT_EQ(server.commands(), run_commands(answers));
}

TEST_F(ApplyRestart, shows_the_password_as_set_while_it_still_waits_for_the_pid_file) {
    server.faults("start * late 2\n");
    wizard.walkToTheEnd(answers);
    wait_for_progress(wizard, {done("setting admin password"), running("connecting to CLI")});
    EXPECT_EQ(wizard.finish(), exited(0));
}

}  // namespace

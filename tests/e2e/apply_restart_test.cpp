// The server is stopped, given the password, switched on in its configuration, started again and
// found where that configuration says.

#include <gtest/gtest.h>

#include "tests/e2e/apply_test.h"
#include "tests/support/files.h"
#include "tests/support/process.h"

namespace {

class ApplyRestart : public ApplyTest {
  protected:
    ApplyRestart() { askForLittle(); }

    /// The log's lines about the server's life and the password, without the process ids.
    Lines life() const {
        Lines lines;
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

TEST_F(ApplyRestart, stops_a_running_server_before_it_sets_the_password) {
    server.faults("stop 1 stays 0.2\n");
    server.start();
    const pid_t before = server.pid();
    runThrough();
    server.waitForEnd();
    EXPECT_EQ(life(), (Lines{not_listening, "# stopped", password_set, listening, "# stopped"}));
    EXPECT_FALSE(process_running(before));
}

TEST_F(ApplyRestart, keeps_to_the_pid_that_it_knows_when_the_new_server_has_no_pid_file) {
    server.start();
    server.faults("start * missing\n");
    runThrough();
    EXPECT_TRUE(server.isRunning());
    EXPECT_EQ(life(), (Lines{not_listening, "# stopped", password_set, listening}));
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
    EXPECT_EQ(life().at(1), "# started, listening at 192.168.7.2:9191");
    EXPECT_EQ(server.commands(), wire());
}

}  // namespace

// A terminal that gets another size while the answers are applied: it is drawn in every wait, and
// looks as if it had had that size from the start.

#include <gtest/gtest.h>

#include "tests/e2e/apply_decoy.h"
#include "tests/e2e/apply_screen.h"
#include "tests/e2e/apply_test.h"
#include "tests/e2e/endings.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/golden.h"
#include "tests/support/local_port.h"
#include "tests/support/wait_until.h"

namespace {

struct Resize {
    const char* name;
    int rows;
    int cols;
    const char* golden;  // of this size
};

const Resize resizes[] = {{"smaller", 20, 72, "72x20"}, {"larger", 60, 200, "200x60"}};

class ApplyResize : public ApplyTest {
  protected:
    void resize(const Resize& to) { wizard.resize(to.rows, to.cols); }

    /// Waits until the box stands in the middle of the terminal, in the way that it has.
    void waitForBoxInTheMiddle() {
        const auto stands = [](const ScreenImage& screen) {
            constexpr int title_row = 1;
            const std::optional<Position> title = screen.find("Operations pending");
            const std::optional<Position> corner = screen.find("┌");
            return title && corner && corner->row == (screen.rows() - 18) / 2 &&
                   corner->col == (screen.cols() - 64) / 2 && title->row == corner->row + title_row;
        };
        wizard.waitUntil(stands, "the box stood in the middle");
    }

    /// Resizes both ways and expects the box and these lines each time.
    void expectDrawn(const std::vector<std::string>& lines) {
        for (const Resize& to : {resizes[1], resizes[0], resizes[1]}) {
            resize(to);
            waitForBoxInTheMiddle();
            wizard.waitForKey();
            EXPECT_EQ(progress_lines(wizard.image()), lines) << to.name;
        }
    }
};

class ApplyResizeTo : public ApplyResize, public testing::WithParamInterface<Resize> {};

TEST_P(ApplyResizeTo, looks_as_drawn_afresh_while_the_server_is_silent) {
    server.faults("\"create domain\" 1 silent\n");
    wizard.walkToTheEnd();
    wizard.waitForText("creating domain");
    wizard.waitForKey();
    resize(GetParam());
    EXPECT_SCREEN(wizard, "golden/apply/running_" + std::string(GetParam().golden));
    wizard.resize(24, 80);
    EXPECT_SCREEN(wizard, "golden/apply/running_80x24");
}

TEST_P(ApplyResizeTo, looks_as_drawn_afresh_when_all_is_done_and_takes_the_key_for_ok) {
    wizard.walkToTheEnd();
    wizard.waitForText(" OK ");
    resize(GetParam());
    EXPECT_SCREEN(wizard, "golden/apply/done_" + std::string(GetParam().golden));
    wizard.waitForKey();
    EXPECT_EQ(wizard.finish(), exited(0));
}

TEST_P(ApplyResizeTo, and_back_looks_as_drawn_afresh_when_all_is_done) {
    wizard.walkToTheEnd();
    wizard.waitForText(" OK ");
    resize(GetParam());
    EXPECT_SCREEN(wizard, "golden/apply/done_" + std::string(GetParam().golden));
    wizard.resize(24, 80);
    EXPECT_SCREEN(wizard, "golden/apply/done_80x24");
}

TEST_P(ApplyResizeTo, under_an_error_makes_the_next_run_stand_where_it_should) {
    server.faults("\"create domain\" 1 refuse\n=\"add alias root\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("Error!");
    wizard.waitForKey();
    resize(GetParam());
    wizard.waitForKey();
    wizard.dismissError("already exist!");
    wizard.walkToTheEnd(answers, Stop::domain);
    wait_for_progress(wizard, {done("setting admin password"), done("connecting to CLI"),
                               done("creating domain localdomain"), running("adding aliases")});
    waitForBoxInTheMiddle();
}

INSTANTIATE_TEST_SUITE_P(ATerminal, ApplyResizeTo, testing::ValuesIn(resizes), CaseName());

TEST_F(ApplyResize, is_drawn_while_the_pid_file_stays) {
    const Decoy decoy;
    write_file(InstalledServer::pid_file, std::to_string(decoy.pid()) + "\n");
    wizard.walkToTheEnd(answers);
    decoy.waitForSignals(1);
    expectDrawn({running("setting admin password")});
}

TEST_F(ApplyResize, is_drawn_while_a_command_runs) {
    server.replaceBy("echo >/run/scratch/stuck; exec sleep 1000\n");
    wizard.walkToTheEnd(answers);
    wait_until([] { return exists("/run/scratch/stuck"); }, "the command ran");
    expectDrawn({running("setting admin password")});
}

TEST_F(ApplyResize, is_drawn_while_nobody_answers_the_connection_attempt) {
    const Decoy decoy;
    const SilentPort silent(9091);
    server.replaceBy("case $1 in -A) exit; esac\necho " + std::to_string(decoy.pid()) + " >" +
                     InstalledServer::pid_file);
    wizard.walkToTheEnd(answers);
    wizard.waitForText("connecting to CLI");
    expectDrawn({done("setting admin password"), running("connecting to CLI")});
}

TEST_F(ApplyResize, is_drawn_while_the_list_has_scrolled) {
    server.faults("=\"config server\" 8 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("configuring WEBMAIL");
    expectDrawn({done("connecting to CLI"), done("creating domain localdomain"),
                 done("adding aliases"), done("configuring WebAdmin"), done("configuring SMTP"),
                 done("configuring POP3"), done("configuring IMAP"),
                 running("configuring WEBMAIL")});
}

TEST_F(ApplyResize, again_and_again_does_no_harm_to_a_run) {
    server.faults("\"\" * late 0.01\n");
    wizard.walkToTheEnd(answers);
    for (int i = 0; !wizard.image().shows(" OK "); ++i) {
        const Resize& to = resizes[i % 2];
        resize(to);
        waitForBoxInTheMiddle();
    }
    wizard.resize(24, 80);
    EXPECT_SCREEN(wizard, "golden/apply/done_80x24");
    wizard.waitForKey();
    EXPECT_EQ(wizard.finish(), exited(0));
    EXPECT_EQ(link_target("/usr/sbin/sendmail"), "/opt/teluma/bin/sendmail");
}

TEST_F(ApplyResize, to_less_than_72_columns_ends_the_wizard_and_not_the_server) {
    server.faults("\"create domain\" 1 silent\n");
    wizard.walkToTheEnd(answers);
    wizard.waitForText("creating domain");
    wizard.resize(24, 71);
    EXPECT_TRUE(ends_with(
        wizard, exited(0),
        "Please enlarge your window so it will have at least 72 columns and 20 lines!\n"));
    EXPECT_TRUE(server.isRunning());
}

}  // namespace

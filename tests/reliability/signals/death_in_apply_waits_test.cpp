// Signals that end the wizard while it applies the answers: what they leave behind, and whether the
// server is told to end.

#include "tests/e2e/apply_waits.h"
#include "tests/reliability/signals/deaths.h"

namespace {

using WaitAndDeath = std::tuple<ApplyWait, Death>;

std::string wait_and_death(const testing::TestParamInfo<WaitAndDeath>& info) {
    return apply_wait_name({std::get<ApplyWait>(info.param), info.index}) + "_" +
           std::get<Death>(info.param).name;
}

class DeathInApplyWait : public testing::TestWithParam<WaitAndDeath> {
  protected:
    DeathInApplyWait() { stage.open(wizard.run()); }

    ApplyStage stage{std::get<ApplyWait>(GetParam())};
    DyingWizard wizard;
};

TEST_P(DeathInApplyWait, leaves_a_usable_terminal_and_ends_a_known_server_unless_by_a_crash) {
    const Death& death = std::get<Death>(GetParam());
    wizard.dieOf(death);
    if (!death.is_crash)
        stage.expectServerTold();
}

INSTANTIATE_TEST_SUITE_P(Requests, DeathInApplyWait,
                         testing::Combine(every_apply_wait(), every_request_to_end()),
                         wait_and_death);
INSTANTIATE_TEST_SUITE_P(Crashes, DeathInApplyWait,
                         testing::Combine(every_apply_wait(),
                                          testing::Values(Death{"SIGSEGV", SIGSEGV, true},
                                                          Death{"SIGQUIT", SIGQUIT, true})),
                         wait_and_death);

}  // namespace

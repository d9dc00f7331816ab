// After initialisation the library may be asked from many threads at once:
// for each family, eight threads sweep every public function for about a
// second, and every answer must equal the one a single-threaded sweep gave
// before them.  Run under ThreadSanitizer in CI, which also reports any
// data race between the threads.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <latch>
#include <thread>
#include <vector>

#include "family_scenarios.h"

namespace {

constexpr int kThreads = 8;
constexpr auto kDuration = std::chrono::milliseconds(1000);

// What one thread saw.
struct Outcome {
    uint64_t sweeps = 0;
    uint64_t mismatches = 0;
    uint64_t answers_short = 0; // sweeps that gave fewer or more answers
    size_t first_bad = SIZE_MAX;
};

// Sweeps until the deadline, comparing each answer with the oracle's.
void SweepUntil(const cvn_scenario::Scenario &s, const std::vector<uint64_t> &oracle,
                std::chrono::steady_clock::time_point deadline, Outcome &out)
{
    do {
        size_t n = 0;
        cvn_scenario::Sweep(s, [&](uint64_t v) {
            if (n >= oracle.size() || oracle[n] != v) {
                ++out.mismatches;
                if (out.first_bad == SIZE_MAX)
                    out.first_bad = n;
            }
            ++n;
        });
        if (n != oracle.size())
            ++out.answers_short;
        ++out.sweeps;
    } while (std::chrono::steady_clock::now() < deadline);
}

class Threads : public ::testing::TestWithParam<size_t> {};

TEST_P(Threads, EightThreadsAnswerAsOneThreadDid)
{
    std::vector<cvn_scenario::Scenario> all = cvn_scenario::AllScenarios();
    cvn_scenario::Scenario &s = all.at(GetParam());
    cvn_scenario::Prepare(s);
    std::vector<uint64_t> oracle;
    cvn_scenario::Sweep(s, [&oracle](uint64_t v) { oracle.push_back(v); });
    ASSERT_GT(oracle.size(), 100u);

    std::vector<Outcome> outcomes(kThreads);
    std::latch start(kThreads + 1);
    std::atomic<int64_t> deadline_ticks{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            start.arrive_and_wait();
            const std::chrono::steady_clock::time_point deadline{
                std::chrono::steady_clock::duration{deadline_ticks.load()}};
            SweepUntil(s, oracle, deadline, outcomes[t]);
        });
    }
    deadline_ticks.store((std::chrono::steady_clock::now() + kDuration).time_since_epoch().count());
    start.arrive_and_wait();
    for (std::thread &t : threads)
        t.join();

    uint64_t sweeps = 0;
    for (int t = 0; t < kThreads; ++t) {
        const Outcome &o = outcomes[t];
        EXPECT_GE(o.sweeps, 1u) << "thread " << t;
        EXPECT_EQ(o.mismatches, 0u) << "thread " << t << ", first at answer " << o.first_bad;
        EXPECT_EQ(o.answers_short, 0u) << "thread " << t;
        sweeps += o.sweeps;
    }
    RecordProperty("sweeps", static_cast<int>(sweeps));
    RecordProperty("answers_per_sweep", static_cast<int>(oracle.size()));

    // The threads read only: the answers are still those of one thread.
    std::vector<uint64_t> after;
    cvn_scenario::Sweep(s, [&after](uint64_t v) { after.push_back(v); });
    EXPECT_EQ(after, oracle);
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, Threads,
                         ::testing::Range<size_t>(0, cvn_scenario::AllScenarios().size()),
                         [](const auto &info) {
                             return std::string(cvn_scenario::AllScenarios()[info.param].name);
                         });

} // namespace

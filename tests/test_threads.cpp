// After init, four threads asking the same questions of a card with modules
// plugged get the answers one thread got (and race on nothing under TSan).
#include <atomic>
#include <thread>

#include "test_support.h"

namespace {

constexpr uint32_t kAny = CVN_NP_IFSUB_ANY;
// A card per family: {type, module in every cage 0-11 of subslot 0 (0: none),
// then (subslot, cage or instance, type)...}.
const std::vector<uint32_t> kCards[] = {
    {0x3D0274, 0x10002, 0, 3, 0x10001, 0, 4, 0x10000, 0, 7, 0x10003},        // brisca
    {0x3D0278, 0x10001, 0, 2, 0x10002},                                      // brisca_4p
    {0x3D0267, 0x10002, 0, 5, 0x10000},                                      // fenna
    {0x3D02C3, 0x10030},                                                     // dornik
    {0x3D02C1, 0},                                                           // maruta
    {0x3D02C7, 0x10021},                                                     // quellon
    {0x3D0296, 0, 0, kAny, 574, 0, 0, 0x10000, 0, 1, 0x10001, 1, kAny, 573}, // 2-slice tolvar
    {0x3D028C, 0, 0, kAny, 576, 1, kAny, 568},                               // 1-slice tolvar
};

// Per NP: local-port count, first front port and its mapping (asking the
// platform), and the front ports of NP-local ports 0..127.
std::vector<uint64_t> Answers()
{
    std::vector<uint64_t> out;
    for (uint32_t np = 0; np < cvn_np_how_many(); ++np) {
        uint32_t f = cvn_test::kSentinel, m[4] = {0, 0, 0, 0};
        out.push_back(cvn_np_info_num_local_ports(np));
        out.push_back(uint64_t(cvn_np_first_front_port_on_np(np, &f)) << 32 | f);
        if (f != cvn_test::kSentinel)
            out.push_back(cvn_np_front_port_mapping_info(f, &m[0], &m[1], &m[2], &m[3]));
        out.insert(out.end(), m, m + 4);
        for (uint32_t port = 0; port < 128; ++port, f = cvn_test::kSentinel)
            out.push_back(uint64_t(cvn_np_info_to_front_port(np, port, &f)) << 32 | f);
    }
    return out;
}

TEST(Threads, FourThreadsAnswerAsOneDidOnEveryFamily)
{
    for (const std::vector<uint32_t> &card : kCards) {
        cvn_np_sim_reset();
        ASSERT_EQ(cvn_np_lib_init(cardtype = card[0]), 0u);
        for (uint32_t cage = 0; cage < 12 && card[1] != 0; ++cage)
            cvn_np_sim_set_ifsubsys(0, cage, card[1]);
        for (size_t i = 2; i + 2 < card.size(); i += 3)
            cvn_np_sim_set_ifsubsys(card[i], card[i + 1], card[i + 2]);
        const std::vector<uint64_t> one = Answers();
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([&] {
                for (int round = 0; round < 30; ++round)
                    wrong += Answers() != one;
            });
        for (auto &t : threads)
            t.join();
        EXPECT_GT(one.size(), 100u) << std::hex << card[0];
        EXPECT_EQ(wrong.load(), 0) << std::hex << card[0];
    }
}

} // namespace

// Core: card-type dispatch, lazy and explicit initialisation, argument
// narrowing of the public functions and the functions outside the table.
#include <functional>
#include <tuple>

#include "test_support.h"

namespace {

using namespace cvn_test;

uint32_t W(uint32_t value) { return value; } // a wide value: the public call narrows it

class CoreTest : public LibTest {
  protected:
    CoreTest() : LibTest(0) {}
    // A process that has not touched the library yet.
    static void Forget() { initialized = 0, card_np_api = nullptr, cardtype = 0; }
    // As the self-test does: the card type into cardtype first.
    static void Init(uint32_t type) { ASSERT_EQ((cardtype = type, cvn_np_lib_init(type)), 0u); }
};

// clang-format off
const std::pair<const char *, cvn_np_api *> kFamily[] = {
    {"brisca", &cvn_np_api_brisca}, {"brisca_4p", &cvn_np_api_brisca_4p}, {"fenna", &cvn_np_api_fenna},
    {"dornik", &cvn_np_api_dornik}, {"maruta", &cvn_np_api_maruta}, {"quellon", &cvn_np_api_quellon},
    {"tolvar_2slice", &cvn_np_api_2slice_tolvar}, {"tolvar_1slice", &cvn_np_api_1slice_tolvar}};
// clang-format on
enum { kBrisca, kBrisca4p, kFenna, kDornik, kMaruta, kQuellon, kTolvar2, kTolvar1 };
// The card-type runs the library serves (first, last, family); no other type.
const uint32_t kRuns[][3] = {
    {0x3D0267, 0x3D026C, kFenna},   {0x3D026D, 0x3D0276, kBrisca},  {0x3D0278, 0x3D0281, kBrisca4p},
    {0x3D028C, 0x3D028F, kTolvar1}, {0x3D0291, 0x3D0295, kTolvar1}, {0x3D0296, 0x3D0299, kTolvar2},
    {0x3D029B, 0x3D029F, kTolvar2}, {0x3D02AA, 0x3D02B3, kBrisca},  {0x3D02B4, 0x3D02BD, kBrisca4p},
    {0x3D02C1, 0x3D02C1, kMaruta},  {0x3D02C2, 0x3D02C3, kDornik},  {0x3D02C4, 0x3D02C5, kBrisca},
    {0x3D02C6, 0x3D02C6, kDornik},  {0x3D02C7, 0x3D02D2, kQuellon}, {0x3D02D8, 0x3D02D8, kTolvar2},
    {0x3D02D9, 0x3D02D9, kTolvar1}, {0x3D02DA, 0x3D02DA, kMaruta}};

// Each init below follows one of another family: re-init serves the new one.
TEST_F(CoreTest, EveryCardTypeSelectsItsFamilyAndNoOtherTypeIsServed)
{
    int served = 0;
    for (uint32_t type = 0x3D0200; type <= 0x3D0300; ++type) {
        SCOPED_TRACE(testing::Message() << std::hex << type);
        int family = -1;
        for (const auto &run : kRuns)
            family = (type >= run[0] && type <= run[1]) ? int(run[2]) : family;
        EXPECT_EQ(cvn_np_card_family(type) == nullptr, family < 0);
        if (family < 0 || ++served == 0)
            continue;
        Forget();
        EXPECT_STREQ(cvn_np_card_family(type), kFamily[family].first);
        EXPECT_EQ(initialized, 0); // a look-up, not an init
        Init(type);
        EXPECT_EQ(std::pair(card_np_api, initialized), std::pair(kFamily[family].second, 1));
        EXPECT_NE(card_np_api->cvn_np_version_get, nullptr); // the family's init filled it
    }
    EXPECT_EQ(served, 85);
    for (uint32_t type : {0u, 0xFFFFFFFFu, 0x013D02C1u, 0x803D02C1u})
        EXPECT_EQ(cvn_np_card_family(type), nullptr) << std::hex << type;
    Forget();
    cardtype = 0x3D02C7; // quellon reads its NP count from here, not from the argument
    ASSERT_EQ(cvn_np_lib_init(0x3D02CA), 0u);
    EXPECT_EQ(std::pair(cardtype, cvn_np_how_many()), std::pair(0x3D02C7u, 2u));
    EXPECT_EQ(cvn_np_sim_card_type_queries() + cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(CoreTest, FirstPublicCallInitialisesFromPlatformCardTypeOnce)
{
    uint32_t out[2];
    uint8_t np = 0;
    const std::function<void()> first_calls[] = {
        [] { cvn_np_how_many(); }, [] { cvn_np_lib_get_ifsubinst(0x13); },
        [&] { cvn_np_first_front_port_on_np(0, out); }, [&] { cvn_np_id_validate(0, &np); },
        [&] { cvn_np_complex_to_subslot_list(0, out, out + 1); }};
    // maruta has two NPs; quellon 0x3D02CA one, read back from cardtype.
    for (auto [type, api, nps] : {std::tuple{0x3D02DAu, &cvn_np_api_maruta, 2u},
                                  std::tuple{0x3D02CAu, &cvn_np_api_quellon, 1u}})
        for (size_t i = 0; i < std::size(first_calls); ++i) {
            SCOPED_TRACE(testing::Message() << std::hex << type << " call " << i);
            cvn_np_sim_reset(), cvn_np_sim_set_card_type(type), Forget();
            first_calls[i]();
            EXPECT_EQ(std::tuple(cardtype, card_np_api, initialized), std::tuple(type, api, 1));
            EXPECT_EQ(std::pair(cvn_np_how_many(), cvn_max_mtu()), std::pair(nps, 9216u));
            EXPECT_EQ(cvn_np_sim_card_type_queries(), 1u); // asked once, by the first call
        }
}

TEST_F(CoreTest, PublicFunctionsNarrowOnlyTheArgumentsTheirSlotsNarrow)
{
    Init(0x3D02C1); // maruta
    Plug(0, 1, CVN_NP_IFSUB_TYPE_MARUTA_10GE);
    EXPECT_EQ(std::pair(cvn_np_port_info_subslot(W(0x10000)),
                        cvn_np_port_info_from_subslot_ifsubinst(W(0x10000), W(0x20001))),
              std::pair(&port_info_maruta_combo0, &port_info_maruta_10g));
    EXPECT_EQ(std::pair(cvn_np_complex_to_subslot(W(0x301)), cvn_np_complex_to_np(W(0x101), 0)),
              std::pair(0u, 1u));
    uint32_t count = kSentinel, first = kSentinel, front = kSentinel;
    EXPECT_EQ(cvn_np_complex_to_subslot_list(W(0x201), &count, &first) + count + first, 1u);
    // tuple index 0x10003 -> 3 plus 0x10004 -> 4: the eighth 10GE port, front 23
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(1, W(1 << 16), W(0x10003), W(0x10004)), 23u);
    // whole values: front 0x10014 is past the table, 0x110040 no maruta type
    EXPECT_EQ(std::pair(cvn_np_front_port_to_np(0x10014), aux_cvn_np_port_info_get(0, 0, 0x110040)),
              std::pair(255u, &port_info_maruat_dummy));
    Init(0x3D02C7); // quellon, two NPs
    EXPECT_EQ(std::tuple(cvn_np_to_cpu_port_map(W(0x10001)),
                         cvn_np_lib_get_phys_port_tuple45(1, 0, W(0x10007), 3),
                         cvn_np_lib_set_subslot_phy_port(W(0x10000), 5)),
              std::tuple(3u, 7u, 5u));
    EXPECT_EQ(cvn_np_info_to_front_port(0, 0x100C1, &front), 0u); // not NP port 193
    EXPECT_EQ(front, kSentinel);
}

TEST_F(CoreTest, IdValidateStoresTheLowByteAndUnsupportedRejects)
{
    const std::tuple<uint32_t, uint32_t, uint32_t, int> cases[] = {
        // card, np_id, result, stored
        {0x3D02C1, 1, 0, 1},        {0x3D02C1, 0x101, 0, 1},
        {0x3D02C1, 2, kInvalid, 2}, {0x3D02C1, 0x1FF, kInvalid, 0xFF},
        {0x3D02CA, 0, 0, 0},        {0x3D02CA, 1, kInvalid, 1}};
    for (auto [type, np_id, result, stored] : cases) {
        Init(type);
        uint8_t np = 0xEE;
        EXPECT_EQ(cvn_np_id_validate(np_id, &np), result) << std::hex << type << " " << np_id;
        EXPECT_EQ(np, stored) << np_id; // stored either way
        EXPECT_EQ(cvn_np_id_validate(np_id, nullptr) & cvn_np_unsupported(), kInvalid);
    }
}

} // namespace

// Core: card-type dispatch, lazy initialisation from the platform, argument
// narrowing of the public functions and the functions outside the table.
#include <functional>

#include "test_support.h"

namespace {

using namespace cvn_test;

const std::string kCoreFile = "cvn_np_lib.cpp";

std::vector<uint32_t> Range(uint32_t first, uint32_t last)
{
    std::vector<uint32_t> out;
    for (uint32_t t = first; t <= last; ++t)
        out.push_back(t);
    return out;
}

std::vector<uint32_t> BriscaTypes()
{
    auto types = Range(0x3D026D, 0x3D0276);
    for (uint32_t t : Range(0x3D02AA, 0x3D02B3))
        types.push_back(t);
    types.push_back(0x3D02C4);
    types.push_back(0x3D02C5);
    return types;
}

// A run-time 32-bit value, so that the narrowing happens at the public call.
uint32_t Wide(uint32_t value) { return value; }

class CoreTest : public LibTest {
  protected:
    CoreTest() : LibTest(0) {}
    // The state of a process that has not touched the library yet.
    static void Forget()
    {
        initialized = 0;
        card_np_api = nullptr;
        cardtype = 0;
    }
};

TEST_F(CoreTest, FirstPublicCallInitialisesFromPlatformCardTypeOnce)
{
    struct Family {
        uint32_t type;
        cvn_np_api *table;
        uint32_t complexes;
    };
    const std::vector<std::function<void()>> first_calls = {
        [] { (void)cvn_np_how_many(); },
        [] { (void)cvn_np_version_get(); },
        [] { (void)cvn_np_lib_get_ifsubinst(0x35); },
        [] { (void)cvn_np_to_cpu_port_map(0); },
        [] { (void)cvn_np_subslot_info_get(); },
    };
    for (const Family &f :
         {Family{0x3D0274, &cvn_np_api_brisca, 4}, Family{0x3D0267, &cvn_np_api_fenna, 3}}) {
        for (size_t i = 0; i < first_calls.size(); ++i) {
            SCOPED_TRACE(testing::Message() << std::hex << f.type << " call " << i);
            cvn_np_sim_reset();
            cvn_np_sim_set_card_type(f.type);
            Forget();
            first_calls[i]();
            EXPECT_EQ(cvn_np_sim_card_type_queries(), 1u);
            EXPECT_EQ(cardtype, f.type);
            EXPECT_EQ(card_np_api, f.table);
            EXPECT_EQ(initialized, 1);
            EXPECT_EQ(cvn_np_how_many(), f.complexes);
            EXPECT_EQ(cvn_max_mtu(), 9216u);
            EXPECT_EQ(cvn_np_sim_card_type_queries(), 1u);
        }
    }
}

TEST_F(CoreTest, IdValidateInitialisesLazilyThroughHowMany)
{
    cvn_np_sim_set_card_type(0x3D0267);
    Forget();
    uint8_t np = 0xEE;
    EXPECT_EQ(cvn_np_id_validate(2, &np), 0u);
    EXPECT_EQ(np, 2);
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 1u);
    EXPECT_EQ(cardtype, 0x3D0267u);
}

TEST_F(CoreTest, UnknownCardTypeFromPlatformEndsInCoreReport)
{
    cvn_np_sim_set_card_type(0x3D0277);
    Forget();
    EXPECT_DEATH(cvn_np_how_many(), ReportLine(kCoreFile, "0"));
}

TEST_F(CoreTest, ExplicitInitNeitherAsksPlatformNorWritesCardType)
{
    Forget();
    cardtype = 0x1234;
    EXPECT_EQ(cvn_np_lib_init(0x3D0270), 0u);
    EXPECT_EQ(cvn_np_how_many(), 4u);
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 0u);
    EXPECT_EQ(cardtype, 0x1234u);
}

TEST_F(CoreTest, EveryBriscaCardTypeSelectsBrisca)
{
    for (uint32_t type : BriscaTypes()) {
        SCOPED_TRACE(testing::Message() << std::hex << type);
        Forget();
        EXPECT_EQ(cvn_np_lib_init(type), 0u);
        EXPECT_EQ(card_np_api, &cvn_np_api_brisca);
        EXPECT_EQ(initialized, 1);
        EXPECT_EQ(cvn_np_how_many(), 4u);
        EXPECT_EQ(cvn_np_subslot_info_get()->max_of_ifsubsys_per_subslot, 8u);
    }
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 0u);
}

TEST_F(CoreTest, EveryFennaCardTypeSelectsFenna)
{
    for (uint32_t type : Range(0x3D0267, 0x3D026C)) {
        SCOPED_TRACE(testing::Message() << std::hex << type);
        Forget();
        EXPECT_EQ(cvn_np_lib_init(type), 0u);
        EXPECT_EQ(card_np_api, &cvn_np_api_fenna);
        EXPECT_EQ(initialized, 1);
        EXPECT_EQ(cvn_np_how_many(), 3u);
        EXPECT_EQ(cvn_np_subslot_info_get()->max_of_ifsubsys_per_subslot, 6u);
    }
}

TEST_F(CoreTest, CardTypesOfNoFamilyEndInCoreReport)
{
    for (uint32_t type : {0x3D0277u, 0x3D0282u, 0x3D0290u, 0x3D029Au, 0x3D02A0u, 0x3D02BEu,
                          0x3D02D3u, 0x3D0266u, 0x3D02DBu, 0u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(testing::Message() << std::hex << type);
        EXPECT_DEATH(cvn_np_lib_init(type), ReportLine(kCoreFile, "0"));
    }
}

TEST_F(CoreTest, CardFamilyNamesTheFamilyInitWouldSelectAndNullForOthers)
{
    const struct {
        uint32_t type;
        const char *name;
        const cvn_np_api *api;
    } cases[] = {
        {0x3D0267, "fenna", &cvn_np_api_fenna},
        {0x3D02C5, "brisca", &cvn_np_api_brisca},
        {0x3D02BD, "brisca_4p", &cvn_np_api_brisca_4p},
        {0x3D02C2, "dornik", &cvn_np_api_dornik},
        {0x3D02DA, "maruta", &cvn_np_api_maruta},
        {0x3D02D2, "quellon", &cvn_np_api_quellon},
        {0x3D0296, "tolvar_2slice", &cvn_np_api_2slice_tolvar},
        {0x3D02D9, "tolvar_1slice", &cvn_np_api_1slice_tolvar},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << c.type);
        Forget();
        ASSERT_NE(cvn_np_card_family(c.type), nullptr);
        EXPECT_STREQ(cvn_np_card_family(c.type), c.name);
        EXPECT_EQ(initialized, 0); // a lookup, not an init
        cvn_np_lib_init(c.type);
        EXPECT_EQ(card_np_api, c.api);
    }
    for (uint32_t type : {0x3D0277u, 0x3D0290u, 0x3D02DBu, 0u, 0xFFFFFFFFu})
        EXPECT_EQ(cvn_np_card_family(type), nullptr) << std::hex << type;
    EXPECT_EQ(cvn_np_sim_card_type_queries(), 0u);
    EXPECT_EQ(cvn_np_sim_ifsubsys_queries(), 0u);
}

TEST_F(CoreTest, ReinitialisationServesTheLastFamily)
{
    ASSERT_EQ(cvn_np_lib_init(0x3D0274), 0u);
    ASSERT_EQ(cvn_np_lib_init(0x3D0267), 0u);
    EXPECT_EQ(card_np_api, &cvn_np_api_fenna);
    EXPECT_EQ(cvn_np_how_many(), 3u);
    EXPECT_EQ(cvn_np_version_get(), &fenna_card_version);

    ASSERT_EQ(cvn_np_lib_init(0x3D02C5), 0u);
    EXPECT_EQ(card_np_api, &cvn_np_api_brisca);
    EXPECT_EQ(cvn_np_how_many(), 4u);
    EXPECT_EQ(cvn_np_version_get(), &brisca_card_version);
    EXPECT_EQ(initialized, 1);
}

TEST_F(CoreTest, ComplexAndSubslotArgumentsAreNarrowedToEightBits)
{
    ASSERT_EQ(cvn_np_lib_init(0x3D0274), 0u);
    EXPECT_EQ(cvn_np_complex_to_subslot(Wide(0x102)), 0u); // complex 2
    EXPECT_EQ(cvn_np_complex_to_np(Wide(0x103), 0), 3u);
    EXPECT_EQ(cvn_np_complex_to_np(Wide(0x7F01), 1), 1u);
    uint32_t count = kSentinel, first = kSentinel;
    EXPECT_EQ(cvn_np_complex_to_subslot_list(Wide(0x301), &count, &first), 0u);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(first, 0u);
    // 0x104 narrows to complex 4, which brisca does not have.
    EXPECT_DEATH(cvn_np_complex_to_subslot(Wide(0x104)),
                 ReportLine("cvn_np_lib_brisca.cpp", "np_complex < cvn_np_how_many()"));
}

TEST_F(CoreTest, SubslotAndCageArgumentsAreNarrowedToSixteenBits)
{
    ASSERT_EQ(cvn_np_lib_init(0x3D0274), 0u);
    EXPECT_EQ(ListOf(cvn_np_port_info_subslot(Wide(0x10000))), (List{{8, CVN_NP_PORT_TYPE_COMBO}}));
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(0, 3, k10G), 0);
    EXPECT_EQ(ListOf(cvn_np_port_info_from_subslot_ifsubinst(Wide(0x20000), Wide(0x10003))),
              (List{{10, CVN_NP_PORT_TYPE_10GE}}));
    // cage 0x10003 -> 3, port 0x10005 -> 5
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_10GE, Wide(0x10000), Wide(0x10003),
                                               Wide(0x10005)),
              0x35u);
    EXPECT_EQ(cvn_np_lib_get_phys_port_tuple45(CVN_NP_PORT_TYPE_100GE, 0, Wide(0x10007), 0), 0x70u);
}

TEST_F(CoreTest, IdValidateStoresLowByteAndChecksItAgainstComplexCount)
{
    struct Case {
        uint32_t card_type, np_id, result;
        uint8_t stored;
    };
    for (const Case &k :
         {Case{0x3D0274, 3, 0, 3}, Case{0x3D0274, 0x104, kInvalid, 4}, Case{0x3D0274, 0x4203, 0, 3},
          Case{0x3D0267, 3, kInvalid, 3}, Case{0x3D0267, 0x302, 0, 2}}) {
        SCOPED_TRACE(testing::Message() << std::hex << k.card_type << " " << k.np_id);
        ASSERT_EQ(cvn_np_lib_init(k.card_type), 0u);
        uint8_t np = 0xEE;
        EXPECT_EQ(cvn_np_id_validate(k.np_id, &np), k.result);
        EXPECT_EQ(np, k.stored);
        EXPECT_EQ(cvn_np_id_validate(k.np_id, nullptr), kInvalid);
    }
}

TEST_F(CoreTest, UnsupportedAlwaysRejects)
{
    ASSERT_EQ(cvn_np_lib_init(0x3D0274), 0u);
    EXPECT_EQ(cvn_np_unsupported(), kInvalid);
    ASSERT_EQ(cvn_np_lib_init(0x3D0267), 0u);
    EXPECT_EQ(cvn_np_unsupported(), kInvalid);
}

} // namespace

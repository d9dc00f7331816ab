// Helpers of the tolvar suites: installing EPs in the substitute, the EPs'
// ports written out from their wiring rules (independently of the
// library's tables), and checks of one port through every operation that
// maps it.
#ifndef CVN_NP_TEST_TOLVAR_SUPPORT_H
#define CVN_NP_TEST_TOLVAR_SUPPORT_H

#include <array>
#include <vector>

#include "test_support.h"

namespace cvn_test::tolvar {

constexpr uint32_t kAny = CVN_NP_SIM_ANY;
constexpr uint32_t kFailStatus = 0x5A17u;
constexpr uint32_t k20None = 565, k2x10 = 566, k4x10 = 567, k8x10 = 568, k2x40 = 570, k1x40 = 571,
                   k16x10 = 573, kSplit = 574, kSplitOne = 575, k20x10 = 576, kSplitB = 577,
                   k20x10B = 578, kUnknownEp = 569;
constexpr uint32_t kPt10 = CVN_NP_PORT_TYPE_10GE, kPt40 = CVN_NP_PORT_TYPE_40GE,
                   kPt100 = CVN_NP_PORT_TYPE_100GE, kPtNone = CVN_NP_PORT_TYPE_NONE;

using Out = std::array<uint32_t, 4>;
inline Out Fresh() { return {kSentinel, kSentinel, kSentinel, kSentinel}; }

// One port of an EP: its port bits (5..0 of front and faceplate port) and
// its NP-local port.
struct Port {
    uint32_t bits;
    uint32_t np_port;
};

// n ports from port bits `bits`, NP-local ports from `np_port` by `step`.
inline std::vector<Port> Ports(uint32_t n, uint32_t bits, uint32_t np_port, uint32_t step = 1)
{
    std::vector<Port> out;
    for (uint32_t k = 0; k < n; ++k)
        out.push_back({bits + k, np_port + k * step});
    return out;
}
inline std::vector<Port> operator+(std::vector<Port> a, const std::vector<Port> &b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// An EP type as one card knows it in one subslot.
struct Ep {
    const char *name;
    uint32_t type;
    uint32_t port_type;
    std::vector<Port> ports;
    List list; // what the type's port list holds
};

inline uint32_t FrontOf(uint32_t subslot, uint32_t bits) { return (subslot << 6) | bits; }

inline void Install(uint32_t subslot, uint32_t type)
{
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(subslot, kAny, type), 0);
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(subslot, 0, type), 0); // a plain EP is instance 0
}
inline void InstallSplit(uint32_t subslot, uint32_t split, uint32_t inst0, uint32_t inst1)
{
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(subslot, kAny, split), 0);
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(subslot, 0, inst0), 0);
    ASSERT_EQ(cvn_np_sim_set_ifsubsys(subslot, 1, inst1), 0);
}

// Slots 8-12 and 19-22 for one port: NP `np`, its NP-local port, front
// and faceplate port both `front`.
inline void ExpectPortMaps(uint32_t front, uint32_t np, uint32_t np_port, uint32_t port_type)
{
    SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << front);
    EXPECT_EQ(cvn_np_front_port_to_np(front), np);
    EXPECT_EQ(cvn_np_front_port_to_np_port(front), np_port);
    EXPECT_EQ(cvn_np_front_port_to_port_type(front), port_type);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(front, &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Out{kSentinel, kSentinel, front, port_type}));
    EXPECT_EQ(cvn_np_front_port_mapping_info(front, &out[0], &out[1], &out[2], &out[3]), 0u);
    EXPECT_EQ(out, (Out{np, np_port, front, port_type}));

    EXPECT_EQ(cvn_faceplate_porttype_to_np(port_type, front), np);
    EXPECT_EQ(cvn_faceplate_porttype_to_np_port(port_type, front), np_port);
    EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(port_type, front), front);
    out = Fresh();
    EXPECT_EQ(cvn_faceplate_porttype_mapping_info(port_type, front, &out[0], nullptr, &out[2]), 0u);
    EXPECT_EQ(out, (Out{np, kSentinel, front, kSentinel}));
}

// Slots 14 and 15 for one NP-local port of NP `np`.
inline void ExpectNpPortMaps(uint32_t np, uint32_t np_port, uint32_t front, uint32_t port_type)
{
    SCOPED_TRACE(testing::Message() << "NP port " << np_port);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_info_to_front_port(np, np_port, &out[0]), 0u);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, np_port, &out[1], &out[2]), 0u);
    EXPECT_EQ(out, (Out{front, front, port_type, kSentinel}));
}

// Slots 14 and 15 answer `result` and write nothing.
inline void ExpectNpPortUnmapped(uint32_t np, uint32_t np_port, uint32_t result)
{
    SCOPED_TRACE(testing::Message() << "NP port " << np_port);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_info_to_front_port(np, np_port, &out[0]), result);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, np_port, &out[1], &out[2]), result);
    EXPECT_EQ(out, Fresh());
}

// Slots 14 and 15 where the EP (or instance) the NP port leads to has no
// entry for it: 0, and the callers' values come back with only the
// subslot bits put in.
inline void ExpectNpPortNotFound(uint32_t np, uint32_t np_port, uint32_t subslot)
{
    SCOPED_TRACE(testing::Message() << "NP port " << np_port);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_info_to_front_port(np, np_port, &out[0]), 0u);
    EXPECT_EQ(cvn_np_info_to_fplate_porttype(np, np_port, &out[1], &out[2]), 0u);
    const uint32_t kept = FrontOf(subslot, kSentinel & 0x3F);
    EXPECT_EQ(out, (Out{kept, kept, kSentinel, kSentinel}));
}

// Every mapping of a front port whose place holds nothing (status kInvalid)
// or whose platform query fails (its status).
inline void ExpectFrontPortUnanswered(uint32_t front, uint32_t status)
{
    SCOPED_TRACE(testing::Message() << "front 0x" << std::hex << front);
    EXPECT_EQ(cvn_np_front_port_to_np(front), kInvalid);
    EXPECT_EQ(cvn_np_front_port_to_np_port(front), kInvalid);
    EXPECT_EQ(cvn_np_front_port_to_port_type(front), kInvalid);
    Out out = Fresh();
    EXPECT_EQ(cvn_np_front_port_to_face_plate_port(front, &out[0], &out[1]), status);
    EXPECT_EQ(cvn_np_front_port_mapping_info(front, &out[0], &out[1], &out[2], &out[3]), status);
    EXPECT_EQ(cvn_faceplate_porttype_to_np(kPt10, front), status);
    EXPECT_EQ(cvn_faceplate_porttype_to_np_port(kPt10, front), status);
    EXPECT_EQ(cvn_faceplate_porttype_to_phys_port(kPt10, front), status);
    EXPECT_EQ(cvn_faceplate_porttype_mapping_info(kPt10, front, &out[0], &out[1], &out[2]), 0u);
    EXPECT_EQ(out, Fresh());
}

// Slot 44 over a hand-made block: the first match within count, else
// nothing written.
inline void ExpectNpPortSearch()
{
    const port_mapping_entry e[] = {
        {0x01, 0, 200, 0x01, 1}, {0x12, 0, 201, 0x13, 3}, {0x22, 1, 201, 0x23, 4}};
    const port_mapping_entry *const entries[] = {&e[0], &e[1], &e[2]};
    Out out = Fresh();
    aux_np_port_to_mapping_info(entries, 201, 3, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out, (Out{0x12, 0x13, 3, kSentinel}));
    out = Fresh();
    aux_np_port_to_mapping_info(entries, 201, 1, &out[0], &out[1], &out[2]);
    aux_np_port_to_mapping_info(entries, 200, 0, &out[0], &out[1], &out[2]);
    aux_np_port_to_mapping_info(entries, 0x100C8, 3, &out[0], &out[1], &out[2]);
    EXPECT_EQ(out, Fresh());
    aux_np_port_to_mapping_info(entries, 200, 3, nullptr, nullptr, &out[3]);
    EXPECT_EQ(out, (Out{kSentinel, kSentinel, kSentinel, 1}));
}

class TolvarTest : public LibTest {
  protected:
    explicit TolvarTest(uint32_t card_type) : LibTest(card_type) {}
};

} // namespace cvn_test::tolvar

#endif // CVN_NP_TEST_TOLVAR_SUPPORT_H

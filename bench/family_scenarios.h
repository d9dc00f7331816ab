// One populated card per family, with the inputs that are valid on it, and a
// sweep that asks every public function about them.  Shared by the
// allocation and thread tests and by the benchmarks.
//
// A scenario names the card type, what the substitute reports (every cage
// or subslot filled) and the front ports that exist with that population.
// Prepare() initialises the library for the card, scripts the substitute
// and derives the other inputs (NP-local ports, faceplate ports, encoded
// tuples) from the library's own answers for those front ports; after it,
// Sweep() only reads.  Nothing in Sweep() allocates: the inputs sit in
// vectors filled by Prepare(), and the answers go to a caller's sink.
#ifndef CVN_NP_FAMILY_SCENARIOS_H
#define CVN_NP_FAMILY_SCENARIOS_H

#include <cstdint>
#include <vector>

#include "cvn_np_lib.h"
#include "cvn_np_sim.h"

namespace cvn_scenario {

// One answer of the platform's query: (subslot, ifsubsys) reports type.
struct Plugged {
    uint32_t subslot;
    uint32_t ifsubsys; // a cage, an instance, or CVN_NP_SIM_ANY
    uint32_t type;
};

// What the library says about one front port (slots 12, 31-35, 37).
struct FrontFacts {
    uint32_t front;
    uint32_t np, np_port, fplate, port_type;
    uint32_t subslot, ifsubsys, ifsub_type; // slot 37
    uint32_t port;                          // slot 33
    uint32_t ifsubinst, ifsubinst_port;     // slots 34, 35
    uint32_t subslot_of, subslot_port;      // slots 31, 32
};

// What the family's own slots 8 and 19 pass to slots 39 and 43 as the port.
enum class AuxPort { cage_port, front, instance_port };

struct Scenario {
    const char *name;
    uint32_t card_type;
    std::vector<Plugged> plugged;
    std::vector<uint32_t> fronts;
    AuxPort aux_port;

    // Filled by Prepare().
    std::vector<FrontFacts> facts;
    uint32_t nps = 0;
    uint32_t subslots = 0;
};

inline std::vector<uint32_t> CageFronts(uint32_t cages, uint32_t ports_per_cage)
{
    std::vector<uint32_t> out;
    for (uint32_t c = 0; c < cages; ++c)
        for (uint32_t p = 0; p < ports_per_cage; ++p)
            out.push_back(16 * c + p);
    return out;
}

inline std::vector<Plugged> EveryCage(uint32_t cages, uint32_t type)
{
    std::vector<Plugged> out;
    for (uint32_t c = 0; c < cages; ++c)
        out.push_back({0, c, type});
    return out;
}

inline std::vector<uint32_t> Range(uint32_t first, uint32_t count)
{
    std::vector<uint32_t> out;
    for (uint32_t k = 0; k < count; ++k)
        out.push_back(first + k);
    return out;
}

inline std::vector<uint32_t> operator+(std::vector<uint32_t> a, const std::vector<uint32_t> &b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// The eight families, each on a card with every cage or subslot filled.
inline std::vector<Scenario> AllScenarios()
{
    constexpr uint32_t any = CVN_NP_SIM_ANY;
    constexpr uint32_t k10 = CVN_NP_IFSUB_TYPE_10GE, k100 = CVN_NP_IFSUB_TYPE_100GE;
    constexpr uint32_t tv_8x10 = CVN_NP_IFSUB_TYPE_TV_8X10GE, tv_split = CVN_NP_IFSUB_TYPE_TV_SPLIT;
    return {
        {"brisca", 0x3D0274, EveryCage(8, k10), CageFronts(8, 10), AuxPort::cage_port, {}, 0, 0},
        {"brisca_4p", 0x3D0278, EveryCage(4, k10), CageFronts(4, 10), AuxPort::cage_port, {}, 0, 0},
        {"fenna", 0x3D0267, EveryCage(6, k10), CageFronts(6, 10), AuxPort::cage_port, {}, 0, 0},
        {"dornik",
         0x3D02C3,
         EveryCage(12, CVN_NP_IFSUB_TYPE_DORNIK_100GE),
         CageFronts(12, 1),
         AuxPort::cage_port,
         {},
         0,
         0},
        {"maruta",
         0x3D02C1,
         {{0, 0, CVN_NP_IFSUB_TYPE_MARUTA_100GE},
          {0, 1, CVN_NP_IFSUB_TYPE_MARUTA_10GE},
          {0, 2, CVN_NP_IFSUB_TYPE_MARUTA_100GE},
          {0, 3, CVN_NP_IFSUB_TYPE_MARUTA_10GE}},
         Range(0, 1) + Range(16, 10) + Range(32, 1) + Range(48, 10),
         AuxPort::instance_port,
         {},
         0,
         0},
        {"quellon",
         0x3D02C7,
         EveryCage(12, CVN_NP_IFSUB_TYPE_QUELLON_10GE),
         Range(0, 48),
         AuxPort::cage_port,
         {},
         0,
         0},
        // Subslot 0 a plain 8x10GE EP, subslot 1 split: a 100GE and a 10GE
        // instance.
        {"tolvar_2slice",
         0x3D0296,
         {{0, any, tv_8x10}, {0, 0, tv_8x10}, {1, any, tv_split}, {1, 0, k100}, {1, 1, k10}},
         Range(0, 8) + Range(64, 1) + Range(80, 10),
         AuxPort::front,
         {},
         0,
         0},
        // Bay 0 split into two 10GE instances, bay 1 a plain 8x10GE EP.
        {"tolvar_1slice",
         0x3D028C,
         {{0, any, tv_split}, {0, 0, k10}, {0, 1, k10}, {1, any, tv_8x10}, {1, 0, tv_8x10}},
         Range(0, 10) + Range(16, 10) + Range(64, 8),
         AuxPort::front,
         {},
         0,
         0},
    };
}

// Selects the scenario's card, scripts the substitute and derives the
// facts of every front port.  Not to run beside Sweep().
inline void Prepare(Scenario &s)
{
    cvn_np_sim_reset();
    cvn_np_sim_set_card_type(s.card_type);
    for (const Plugged &p : s.plugged)
        cvn_np_sim_set_ifsubsys(p.subslot, p.ifsubsys, p.type);
    cardtype = s.card_type;
    cvn_np_lib_init(s.card_type);
    s.nps = cvn_np_how_many();
    s.subslots = cvn_np_subslot_info_get()->num_of_subslots;
    s.facts.clear();
    for (uint32_t f : s.fronts) {
        FrontFacts x{};
        x.front = f;
        cvn_np_front_port_mapping_info(f, &x.np, &x.np_port, &x.fplate, &x.port_type);
        aux_cvn_np_front_port_to_ifsubsys(f, &x.subslot, &x.ifsubsys, &x.ifsub_type);
        x.port = cvn_np_lib_get_port(f);
        x.ifsubinst = cvn_np_lib_get_ifsubinst(f);
        x.ifsubinst_port = cvn_np_lib_get_ifsubinst_port(f);
        x.subslot_of = cvn_np_lib_get_subslot(f);
        x.subslot_port = cvn_np_lib_get_subslot_port(f);
        s.facts.push_back(x);
    }
}

// Every public function of the library, with every input of the scenario
// that it takes; `sink(value)` receives each answer and each output in a
// fixed order (pointers as their address).  Outputs start from a marker so
// that an output left unwritten is an answer as well.
template <class Sink> void Sweep(const Scenario &s, Sink &&sink)
{
    constexpr uint32_t marker = 0xA5A5A5A5u;
    auto ptr = [&sink](const void *p) { sink(reinterpret_cast<uintptr_t>(p)); };
    auto list = [&ptr, &sink](const port_info *p) {
        ptr(p);
        if (p != nullptr)
            sink(uint64_t{p->num_ports} << 32 | p->port_type);
    };
    uint32_t o[4];
    auto fresh = [&o] {
        for (uint32_t &x : o)
            x = marker;
    };
    auto outputs = [&o, &sink] {
        for (uint32_t x : o)
            sink(x);
    };

    ptr(cvn_np_version_get());
    sink(cvn_max_mtu());
    sink(cvn_np_how_many());
    sink(cvn_np_chip_how_many());
    list(cvn_np_port_info_get());
    ptr(cvn_np_subslot_info_get());
    for (uint32_t sub = 0; sub < s.subslots; ++sub) {
        list(cvn_np_port_info_subslot(static_cast<uint16_t>(sub)));
        fresh();
        sink(cvn_np_subslot_to_np_list(static_cast<uint8_t>(sub), &o[0], &o[1]));
        outputs();
    }
    for (const Plugged &p : s.plugged) {
        if (p.ifsubsys == CVN_NP_SIM_ANY)
            continue;
        list(cvn_np_port_info_from_subslot_ifsubinst(static_cast<uint16_t>(p.subslot),
                                                     static_cast<uint16_t>(p.ifsubsys)));
    }
    for (uint32_t np = 0; np < s.nps; ++np) {
        const auto n8 = static_cast<uint8_t>(np);
        sink(cvn_np_info_num_local_ports(np));
        fresh();
        sink(cvn_np_first_front_port_on_np(np, &o[0]));
        sink(cvn_np_first_phys_port_on_np(np, &o[1]));
        sink(cvn_np_first_fplate_porttype_on_np(np, &o[2], &o[3]));
        outputs();
        sink(cvn_np_complex_to_subslot(n8));
        fresh();
        sink(cvn_np_complex_to_subslot_list(n8, &o[0], o + 1)); // room for two subslots
        outputs();
        sink(cvn_np_complex_to_np(n8, 0));
        sink(cvn_np_complex_to_np(n8, 1));
        sink(cvn_np_to_cpu_port_map(static_cast<uint16_t>(np)));
        uint8_t id = 0xEE;
        sink(cvn_np_id_validate(np, &id));
        sink(id);
    }
    sink(cvn_np_set_if_subsys_type(0, 0));
    sink(cvn_np_unsupported());

    for (const FrontFacts &x : s.facts) {
        const uint32_t f = x.front;
        const uint32_t aux_port = s.aux_port == AuxPort::front           ? f
                                  : s.aux_port == AuxPort::instance_port ? x.ifsubinst_port
                                                                         : x.port;
        sink(cvn_np_front_port_to_np(f));
        sink(cvn_np_front_port_to_np_port(f));
        sink(cvn_np_front_port_to_port_type(f));
        fresh();
        sink(cvn_np_front_port_to_face_plate_port(f, &o[0], &o[1]));
        sink(cvn_np_front_port_mapping_info(f, &o[0], &o[1], &o[2], &o[3]));
        outputs();
        fresh();
        sink(aux_cvn_np_front_port_to_ifsubsys(f, &o[0], &o[1], &o[2]));
        sink(aux_cvn_np_front_port_to_ifsubinst(f, &o[3]));
        outputs();
        sink(cvn_np_lib_get_subslot(f));
        sink(cvn_np_lib_get_subslot_port(f));
        sink(cvn_np_lib_get_port(f));
        sink(cvn_np_lib_get_ifsubinst(f));
        sink(cvn_np_lib_get_ifsubinst_port(f));
        sink(cvn_np_lib_set_subslot_phy_port(static_cast<uint16_t>(x.subslot_of), x.subslot_port));
        sink(cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(static_cast<uint16_t>(x.subslot_of),
                                                             x.ifsubinst, x.ifsubinst_port));
        sink(cvn_np_lib_get_phys_port_tuple45(x.port_type, static_cast<uint16_t>(x.subslot_of),
                                              static_cast<uint16_t>(x.ifsubinst),
                                              static_cast<uint16_t>(x.ifsubinst_port)));

        fresh();
        sink(cvn_np_info_to_front_port(x.np, x.np_port, &o[0]));
        sink(cvn_np_info_to_fplate_porttype(x.np, x.np_port, &o[1], &o[2]));
        outputs();

        sink(cvn_faceplate_porttype_to_np(x.port_type, x.fplate));
        sink(cvn_faceplate_porttype_to_np_port(x.port_type, x.fplate));
        sink(cvn_faceplate_porttype_to_phys_port(x.port_type, x.fplate));
        fresh();
        sink(cvn_faceplate_porttype_mapping_info(x.port_type, x.fplate, &o[0], &o[1], &o[2]));
        outputs();

        list(aux_cvn_np_port_info_get(x.subslot, x.ifsubsys, x.ifsub_type));
        fresh();
        aux_cvn_np_front_port_to_mapping_info(x.ifsubsys, aux_port, x.ifsub_type, &o[0], &o[1],
                                              &o[2], &o[3]);
        outputs();
        sink(aux_cvn_np_info_num_local_ports(x.subslot, x.np, x.ifsub_type));
        fresh();
        aux_cvn_np_info_to_mapping_info(x.np, x.np_port, x.ifsub_type, &o[0], &o[1], &o[2]);
        outputs();
        fresh();
        sink(aux_cvn_np_first_port_on_np(x.np, x.ifsubsys, x.ifsub_type, &o[0], &o[1], &o[2]));
        outputs();
        fresh();
        sink(aux_cvn_faceplate_to_mapping_info(x.ifsubinst, aux_port, x.port_type, &o[0], &o[1],
                                               &o[2]));
        outputs();
    }

    // Slot 44 over a block of the caller's own.
    static const port_mapping_entry block[] = {{0x10, 0, 5, 0x11, 1}, {0x20, 0, 7, 0x21, 3}};
    static const port_mapping_entry *const entries[] = {&block[0], &block[1]};
    fresh();
    aux_np_port_to_mapping_info(entries, 7, 2, &o[0], &o[1], &o[2]);
    outputs();
}

} // namespace cvn_scenario

#endif // CVN_NP_FAMILY_SCENARIOS_H

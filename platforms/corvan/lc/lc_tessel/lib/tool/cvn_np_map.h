// cvn_np_map.h - the port-map explorer: what a card's ports map to, as the
// library answers it, for the modules an engineer says are plugged in.
//
// The tool knows, per family, which modules exist and how many ports each
// carries (one table, cvn_np_map_card.cpp); every mapping answer it shows or
// checks comes from the library's public functions.  It asks only about
// ports that exist for what is plugged, so the library never asserts.
#ifndef CVN_NP_MAP_H
#define CVN_NP_MAP_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cvn_np_map {

constexpr uint32_t k_none = 0xFFFFFFFFu;      // nothing plugged (the platform's NONE)
constexpr uint32_t k_any = 0xFFFFFFFFu;       // the subslot-level key
constexpr uint32_t k_unwritten = 0xFFFFFFFEu; // an output the library left alone

// Where a family's ports sit.
enum class layout {
    cages,       // subslot 0, a module per cage; no module, no ports
    instances,   // subslot 0, fixed instances that answer whatever is plugged
    subslot_eps, // an EP per subslot; a split EP holds two typed instances
};

// A module (or EP, or instance type) a family knows.
struct module_type {
    uint32_t code;
    const char *name;   // accepted on the command line besides the code
    uint32_t ports;     // per cage, instance or plain EP; 0 for a split EP
    uint32_t units = 0; // bit mask of the cages/instances that take it; 0: any

    constexpr bool takes(uint32_t unit) const
    {
        return units == 0 || (unit < 32 && ((units >> unit) & 1) != 0);
    }
};

struct family {
    const char *name; // as cvn_np_card_family answers
    layout kind;
    std::span<const module_type> types;    // per cage or instance
    std::span<const module_type> ep_types; // subslot level (subslot_eps only)
    bool per_type_count;                   // aux_cvn_np_info_num_local_ports is served
};

// What is plugged where: (subslot, cage/instance or k_any) -> type.
struct plug {
    uint32_t subslot;
    uint32_t unit;
    uint32_t type;
};

struct card {
    uint32_t type;
    const family *fam;
    uint32_t subslots;
    uint32_t units; // cages or instances per subslot
    std::vector<plug> plugs;

    uint32_t plugged(uint32_t subslot, uint32_t unit) const;
    const module_type *module_at(uint32_t subslot, uint32_t unit) const;
    const module_type *ep_at(uint32_t subslot) const;
};

// One front port and the library's answers for it.
struct port_row {
    uint32_t front;
    uint32_t subslot;
    uint32_t unit; // cage or instance; k_none for a plain EP's port
    uint32_t port; // within the cage, instance or EP
    uint32_t status = 0;
    uint32_t np = k_unwritten, np_port = k_unwritten;
    uint32_t fplate = k_unwritten, port_type = k_unwritten;
};

struct np_row {
    uint32_t np;
    uint32_t local_ports;
    uint32_t first_status;
    uint32_t first_front; // k_unwritten when not written
};

struct port_map {
    std::vector<port_row> ports;
    std::vector<np_row> nps;
};

// A command-line or set-up error: one line, exit status 2.
struct usage_error {
    std::string message;
};

const module_type *find_type(std::span<const module_type> types, uint32_t code);

// Selects the card in the library and the platform substitute (nothing
// plugged); throws usage_error for a card type the library does not serve.
card open_card(uint32_t card_type);
// Parses SUBSLOT:IFSUBSYS=TYPE and checks it against the card's family;
// throws usage_error.
plug parse_module(const card &c, const std::string &text);
// Checks the whole set (instance types need a split EP); throws usage_error.
void validate_plugs(const card &c);
// Tells the platform substitute what is plugged, and reads the ports that
// exist for it with the library's answers.
port_map read_port_map(const card &c);

// A C integer literal, the whole text, within 32 bits.
bool parse_number(const std::string &text, uint32_t &value);
// The one port a question names: "front" PORT, "np" NP:NP_PORT or "fplate"
// TYPE:PORT (TYPE a port-type name or code); throws usage_error when the
// question is malformed or the card has no such port with what is plugged.
const port_row &find_port(const card &c, const port_map &m, const std::string &kind,
                          const std::string &question);

std::string hex(uint32_t value);
std::string port_type_name(uint32_t port_type);
std::string plugs_text(const card &c);

// Output of the map (cvn_np_map_output.cpp).
enum class format { table, csv, json };
void print_map(const card &c, const port_map &m, format f);
// One port's row: the table's or CSV's header and row, or its JSON object.
void print_port(const port_row &r, format f);
void write_svg(const card &c, const port_map &m, const std::string &path);

// --check (cvn_np_map_check.cpp).
struct check_totals {
    unsigned cards = 0, configurations = 0, ports = 0, disagreements = 0;
};
// One configuration: the card and what is plugged (the card is not counted).
void check_configuration(const card &c, check_totals &totals);
void check_every_card(check_totals &totals);
// Prints the known differences seen and the totals; returns the exit
// status, 1 when there is a disagreement.
int print_check_summary(const check_totals &totals);

} // namespace cvn_np_map

#endif

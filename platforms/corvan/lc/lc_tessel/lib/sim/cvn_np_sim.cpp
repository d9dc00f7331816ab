// cvn_np_sim.cpp - the platform substitute: both platform calls answered
// from a scripted table and card type (see cvn_np_sim.h).
//
// The table is scripted before the queries start and only read while they
// run, so it needs no lock; the query counters, which every query raises,
// are atomic.

#include "cvn_np_sim.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string_view>

namespace {

constexpr int kMaxEntries = CVN_NP_SIM_MAX_ENTRIES;
constexpr uint32_t kNullArgumentStatus = 22;

struct Entry {
    uint32_t subslot, ifsubsys, status, type; // a status other than 0 fails the query
};

struct Table {
    Entry entries[kMaxEntries];
    int count;
};

struct State {
    Table table{};
    uint32_t card_type = CVN_NP_SIM_DEFAULT_CARD_TYPE;
    uint32_t fail_all = 0;
    std::atomic<uint32_t> card_type_queries{0};
    std::atomic<uint32_t> ifsubsys_queries{0};
    std::once_flag environment_read;
};

constinit State g;

constexpr Entry kNotInstalled{0, 0, 0, CVN_NP_IFSUB_TYPE_NONE}; // the answer for a key not scripted

// The index of the key's entry, or table.count when it has none.
int find(const Table &table, uint32_t subslot, uint32_t ifsubsys)
{
    int i = 0;
    while (i < table.count &&
           (table.entries[i].subslot != subslot || table.entries[i].ifsubsys != ifsubsys))
        ++i;
    return i;
}

// Replaces the answer for the entry's key, or adds it; returns its index,
// or -1 when the table is full.
int put(Table &table, const Entry &entry)
{
    const int i = find(table, entry.subslot, entry.ifsubsys);
    if (i == kMaxEntries)
        return -1;
    table.entries[i] = entry;
    table.count += i == table.count ? 1 : 0;
    return i;
}

// A C integer literal as strtoul(..., 0) reads it, with no whitespace or
// sign, the whole text, within 32 bits.  What follows the text is never a
// digit (a separator or the end), so strtoul stops where the text ends.
bool parse_u32(std::string_view text, uint32_t &out)
{
    if (text.empty() || text[0] < '0' || text[0] > '9')
        return false;
    char *end = nullptr;
    errno = 0;
    const unsigned long value = std::strtoul(text.data(), &end, 0);
    if (end != text.data() + text.size() || errno != 0 || value > UINT32_MAX)
        return false;
    out = static_cast<uint32_t>(value);
    return true;
}

// SUBSLOT:IFSUBSYS=TYPE, IFSUBSYS a number or "any".
bool parse_item(std::string_view item, Entry &entry)
{
    const size_t colon = item.find(':');
    const size_t equals = item.find('=', colon == std::string_view::npos ? colon : colon + 1);
    if (equals == std::string_view::npos)
        return false;
    const std::string_view ifsubsys = item.substr(colon + 1, equals - colon - 1);
    entry = {0, CVN_NP_SIM_ANY, 0, 0};
    return parse_u32(item.substr(0, colon), entry.subslot) &&
           (ifsubsys == "any" || parse_u32(ifsubsys, entry.ifsubsys)) &&
           parse_u32(item.substr(equals + 1), entry.type);
}

std::string_view trim(std::string_view s)
{
    const size_t first = std::min(s.find_first_not_of(" \t"), s.size());
    return s.substr(first, s.find_last_not_of(" \t") + 1 - first);
}

// Control characters in a message (an environment value may hold any)
// would break the one-line report; show them as '?'.
void flatten(char *text)
{
    for (; *text != '\0'; ++text)
        if (static_cast<unsigned char>(*text) < 0x20 || *text == 0x7F)
            *text = '?';
}

// Adds every item of the list to the table or, on a malformed item or when
// the new keys do not all fit, none, and describes the item at fault (cut
// to the buffer).  The items are parsed first, the later of two with the
// same key counting, then added in the order their keys first appear.
bool load_list(const char *list, char *error, size_t error_size)
{
    Table keys{}; // the list's keys, texts[i] the item of keys.entries[i]
    std::string_view texts[kMaxEntries];
    std::string_view rest = list != nullptr ? list : "", fault;
    bool malformed = false, no_room = false;
    for (bool more = !rest.empty(); more && !malformed && !no_room;) {
        const size_t comma = rest.find(',');
        fault = trim(rest.substr(0, comma));
        Entry entry{};
        malformed = !parse_item(fault, entry);
        const int i = malformed ? -1 : put(keys, entry);
        no_room = !malformed && i < 0;
        if (i >= 0)
            texts[i] = fault;
        more = comma != std::string_view::npos;
        rest.remove_prefix(more ? comma + 1 : rest.size());
    }
    Table next = g.table;
    for (int i = 0; i < keys.count && !malformed && !no_room; ++i)
        if (put(next, keys.entries[i]) < 0)
            no_room = true, fault = texts[i];
    if (!malformed && !no_room) {
        g.table = next;
        return true;
    }
    if (error != nullptr && error_size > 0) {
        const int length = static_cast<int>(fault.size());
        if (no_room)
            (void)std::snprintf(error, error_size, "no room for item \"%.*s\" (at most %d keys)",
                                length, fault.data(), kMaxEntries);
        else
            (void)std::snprintf(error, error_size,
                                "malformed item \"%.*s\" (expected SUBSLOT:IFSUBSYS=TYPE)", length,
                                fault.data());
        flatten(error);
    }
    return false;
}

[[noreturn]] void reject_environment(const char *variable, char *message)
{
    flatten(message);
    (void)std::fprintf(stderr, "cvn_np_sim: %s: %s\n", variable, message);
    std::exit(2);
}

void read_environment()
{
    char message[512];
    const char *card_text = std::getenv("CVN_NP_SIM_CARD_TYPE");
    uint32_t card_type = g.card_type; // an unset or empty value leaves it
    if (card_text != nullptr && *card_text != '\0' && !parse_u32(card_text, card_type)) {
        (void)std::snprintf(message, sizeof message,
                            "malformed value \"%s\" (expected a C integer literal of 32 bits)",
                            card_text);
        reject_environment("CVN_NP_SIM_CARD_TYPE", message);
    }
    if (!load_list(std::getenv("CVN_NP_SIM_IFSUBSYS"), message, sizeof message))
        reject_environment("CVN_NP_SIM_IFSUBSYS", message);
    g.card_type = card_type;
}

// Everything here reads the environment once, on the first call.
State &sim()
{
    std::call_once(g.environment_read, read_environment);
    return g;
}

} // namespace

extern "C" {

uint32_t platform_get_my_card_type(void)
{
    ++sim().card_type_queries;
    return g.card_type;
}

uint32_t rva_ifsubsys_get_info(const ifsubsys_id *id, ifsubsys_info *info)
{
    ++sim().ifsubsys_queries;
    if (id == nullptr || info == nullptr)
        return kNullArgumentStatus;
    if (g.fail_all != 0)
        return g.fail_all;
    const int i = find(g.table, id->subslot, id->ifsubsys);
    const Entry &answer = i < g.table.count ? g.table.entries[i] : kNotInstalled;
    if (answer.status != 0)
        return answer.status;
    *info = ifsubsys_info{0, answer.type, 0, 0};
    return 0;
}

void cvn_np_sim_reset(void)
{
    sim(); // so that a later first query cannot apply the environment
    g.table.count = 0;
    g.card_type = CVN_NP_SIM_DEFAULT_CARD_TYPE;
    g.fail_all = 0;
    g.card_type_queries = 0;
    g.ifsubsys_queries = 0;
}

void cvn_np_sim_load_environment(void)
{
    std::call_once(g.environment_read, [] {}); // read here, and once only
    read_environment();
}

void cvn_np_sim_set_card_type(uint32_t card_type) { sim().card_type = card_type; }
void cvn_np_sim_fail_all(uint32_t status) { sim().fail_all = status; }
uint32_t cvn_np_sim_card_type_queries(void) { return sim().card_type_queries; }
uint32_t cvn_np_sim_ifsubsys_queries(void) { return sim().ifsubsys_queries; }

int cvn_np_sim_set_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t type)
{
    return put(sim().table, {subslot, ifsubsys, 0, type}) < 0 ? -1 : 0;
}

int cvn_np_sim_fail_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t status)
{
    return status != 0 && put(sim().table, {subslot, ifsubsys, status, 0}) >= 0 ? 0 : -1;
}

int cvn_np_sim_load_ifsubsys(const char *list, char *error, unsigned error_size)
{
    sim();
    return load_list(list, error, error_size) ? 0 : -1;
}

} // extern "C"

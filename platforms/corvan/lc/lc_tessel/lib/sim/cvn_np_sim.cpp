// cvn_np_sim.cpp - the platform substitute (see cvn_np_sim.h).  Queries only
// read what is scripted, so it needs no lock; the counters they raise are atomic.

#include "cvn_np_sim.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

struct Entry {
    uint32_t subslot, ifsubsys, status, type; // a status other than 0 fails the query
};

struct Script { // as it is before anything is scripted
    Entry entries[CVN_NP_SIM_MAX_ENTRIES]{};
    int count = 0;
    uint32_t card_type = CVN_NP_SIM_DEFAULT_CARD_TYPE, fail_all = 0; // not 0: every query fails
};

constinit Script scripted;
constinit std::atomic<uint32_t> card_type_queries{0}, ifsubsys_queries{0};
static_assert(CVN_NP_SIM_MAX_ENTRIES == 64, "the message of a full table says 64");

// The key's entry, or the end of the entries in use when it has none.
Entry *find(Script &s, uint32_t subslot, uint32_t ifsubsys)
{
    return std::find_if(s.entries, s.entries + s.count, [&](const Entry &e) {
        return e.subslot == subslot && e.ifsubsys == ifsubsys;
    });
}

// Replaces the answer for the entry's key or adds it; false when the table is full.
bool put(Script &s, const Entry &entry)
{
    Entry *const slot = find(s, entry.subslot, entry.ifsubsys);
    if (slot == std::end(s.entries))
        return false;
    s.count += slot == s.entries + s.count ? 1 : 0;
    *slot = entry;
    return true;
}

// A number as cvn_np_sim.h says: a digit first, then the whole text read by
// strtoul, which stops at its end (a separator or the end, never a digit).
bool parse_u32(std::string_view text, uint32_t &out)
{
    char *end = nullptr;
    errno = 0;
    const unsigned long value = std::strtoul(text.data(), &end, 0);
    if (text.find_first_of("0123456789") != 0 || end != text.data() + text.size() || errno != 0 ||
        value > UINT32_MAX)
        return false;
    out = static_cast<uint32_t>(value);
    return true;
}

// SUBSLOT:IFSUBSYS=TYPE, IFSUBSYS a number or "any".
bool parse_item(std::string_view item, Entry &entry)
{
    const size_t colon = item.find(':'), equals = item.find('=', colon); // npos when colon is
    const std::string_view ifsubsys = item.substr(colon + 1, equals - colon - 1);
    entry = {0, CVN_NP_SIM_ANY, 0, 0};
    return equals != std::string_view::npos && parse_u32(item.substr(0, colon), entry.subslot) &&
           (ifsubsys == "any" || parse_u32(ifsubsys, entry.ifsubsys)) &&
           parse_u32(item.substr(equals + 1), entry.type);
}

// Writes `what "text" (why)` to the buffer, cut to its size, on one line:
// control characters (an environment value may hold any) show as '?'.
void describe(char *out, size_t size, const char *what, std::string_view text, const char *why)
{
    if (out == nullptr || size == 0)
        return;
    (void)std::snprintf(out, size, "%s \"%.*s\" (%s)", what, static_cast<int>(text.size()),
                        text.data(), why);
    for (; *out != '\0'; ++out)
        if (static_cast<unsigned char>(*out) < 0x20 || *out == 0x7F)
            *out = '?';
}

// Adds the items of the list to a copy of the table, which replaces it once
// all are in; the first item that is malformed or finds no room ends the
// load, described, with the table as it was.
bool load_list(Script &s, const char *list, char *error, size_t error_size)
{
    Script next = s;
    const std::string_view text = list != nullptr ? list : "", blank = " \t";
    for (size_t start = 0, comma = 0; !text.empty() && comma != std::string_view::npos;
         start = comma + 1) {
        comma = text.find(',', start);
        std::string_view item = text.substr(start, comma - start);
        item.remove_prefix(std::min(item.find_first_not_of(blank), item.size()));
        item.remove_suffix(item.size() - item.find_last_not_of(blank) - 1);
        Entry entry{};
        const bool malformed = !parse_item(item, entry);
        if (malformed || !put(next, entry)) {
            describe(error, error_size, malformed ? "malformed item" : "no room for item", item,
                     malformed ? "expected SUBSLOT:IFSUBSYS=TYPE" : "at most 64 keys");
            return false;
        }
    }
    s = next;
    return true;
}

// Reads both variables into what is scripted; a malformed value ends the
// program with one line on stderr naming the variable, and exit status 2.
void read_environment()
{
    char message[512];
    const char *card_text = std::getenv("CVN_NP_SIM_CARD_TYPE"); // unset or empty leaves it
    const bool card_ok =
        card_text == nullptr || *card_text == '\0' || parse_u32(card_text, scripted.card_type);
    if (!card_ok)
        describe(message, sizeof message, "malformed value", card_text,
                 "expected a C integer literal of 32 bits");
    else if (load_list(scripted, std::getenv("CVN_NP_SIM_IFSUBSYS"), message, sizeof message))
        return;
    (void)std::fprintf(stderr, "cvn_np_sim: %s: %s\n",
                       card_ok ? "CVN_NP_SIM_IFSUBSYS" : "CVN_NP_SIM_CARD_TYPE", message);
    std::exit(2);
}

// What is scripted, once the first call of anything here has read the
// environment into it.
Script &script()
{
    [[maybe_unused]] static const bool read = (read_environment(), true);
    return scripted;
}

} // namespace

extern "C" {

uint32_t platform_get_my_card_type(void)
{
    ++card_type_queries;
    return script().card_type;
}

uint32_t rva_ifsubsys_get_info(const ifsubsys_id *id, ifsubsys_info *info)
{
    Script &s = script();
    ++ifsubsys_queries;
    if (id == nullptr || info == nullptr)
        return 22; // the status of a NULL argument
    const Entry *const entry = find(s, id->subslot, id->ifsubsys);
    const bool listed = entry != s.entries + s.count;
    if (s.fail_all != 0 || (listed && entry->status != 0))
        return s.fail_all != 0 ? s.fail_all : entry->status;
    *info = ifsubsys_info{0, listed ? entry->type : CVN_NP_IFSUB_TYPE_NONE, 0, 0};
    return 0;
}

void cvn_np_sim_reset(void)
{
    script() = Script{}; // read first, so that no later first call applies the environment
    card_type_queries = ifsubsys_queries = 0;
}

// When script() reads the environment just now, reading it again changes nothing.
void cvn_np_sim_load_environment(void) { script(), read_environment(); }

void cvn_np_sim_set_card_type(uint32_t type) { script().card_type = type; }
void cvn_np_sim_fail_all(uint32_t status) { script().fail_all = status; }
uint32_t cvn_np_sim_card_type_queries(void) { return script(), card_type_queries; }
uint32_t cvn_np_sim_ifsubsys_queries(void) { return script(), ifsubsys_queries; }

int cvn_np_sim_set_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t type)
{
    return put(script(), {subslot, ifsubsys, 0, type}) ? 0 : -1;
}

int cvn_np_sim_fail_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t status)
{
    return status != 0 && put(script(), {subslot, ifsubsys, status, 0}) ? 0 : -1;
}

int cvn_np_sim_load_ifsubsys(const char *list, char *error, unsigned error_size)
{
    return load_list(script(), list, error, error_size) ? 0 : -1;
}

} // extern "C"

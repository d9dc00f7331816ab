// cvn_np_sim.cpp - the platform substitute: both platform calls answered
// from a scripted table and card type (see cvn_np_sim.h).
//
// Readers never lock.  Every shared word is an atomic: a table entry is
// written under the writer mutex before `count` is raised with release, and
// a reader that loads `count` with acquire sees the entries below it.  Keys
// and answers are single 64-bit words, so a reader never sees half of one.

#include "cvn_np_sim.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string_view>

namespace {

constexpr uint32_t kNullArgumentStatus = 22;
constexpr int kMaxEntries = CVN_NP_SIM_MAX_ENTRIES;
constexpr const char kCardTypeVar[] = "CVN_NP_SIM_CARD_TYPE";
constexpr const char kIfsubsysVar[] = "CVN_NP_SIM_IFSUBSYS";

constexpr uint64_t make_key(uint32_t subslot, uint32_t ifsubsys)
{
    return uint64_t{subslot} << 32 | ifsubsys;
}

// An answer word: the status in the upper half, the type in the lower half.
constexpr uint64_t make_answer(uint32_t status, uint32_t type)
{
    return uint64_t{status} << 32 | type;
}

struct Entry {
    std::atomic<uint64_t> key{0};
    std::atomic<uint64_t> answer{0};
};

struct State {
    Entry entries[kMaxEntries];
    std::atomic<int> count{0};
    std::atomic<uint32_t> card_type{CVN_NP_SIM_DEFAULT_CARD_TYPE};
    std::atomic<uint32_t> fail_all{0};
    std::atomic<uint32_t> card_type_queries{0};
    std::atomic<uint32_t> ifsubsys_queries{0};
    std::mutex writer;
    std::once_flag environment_read;
};

constinit State g;

// ---- Parsing ---------------------------------------------------------------

int digit_value(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// A C integer literal as strtoul(..., 0) reads it (0x/0X hex, leading 0
// octal, else decimal), but with no whitespace or sign, every character
// consumed, and the value within 32 bits.
bool parse_u32(std::string_view s, uint32_t &out)
{
    if (s.empty())
        return false;
    int base = 10;
    size_t i = 0;
    if (s[0] == '0') {
        if (s.size() > 1 && (s[1] == 'x' || s[1] == 'X')) {
            base = 16;
            i = 2;
            if (i == s.size())
                return false; // "0x" alone
        } else {
            base = 8;
            i = 1;
        }
    }
    uint64_t value = 0;
    for (; i < s.size(); ++i) {
        const int d = digit_value(s[i]);
        if (d < 0 || d >= base)
            return false;
        value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(d);
        if (value > UINT32_MAX)
            return false;
    }
    out = static_cast<uint32_t>(value);
    return true;
}

std::string_view trim(std::string_view s)
{
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

struct Staged {
    uint64_t key = 0;
    uint32_t type = 0;
    std::string_view item;
};

// A parsed list: distinct keys, a later item for the same key replacing an
// earlier one.
struct Parsed {
    Staged items[kMaxEntries];
    int n = 0;
};

struct ListError {
    bool no_room;
    std::string_view item;
};

bool parse_item(std::string_view item, uint64_t &key, uint32_t &type)
{
    const size_t colon = item.find(':');
    if (colon == std::string_view::npos)
        return false;
    const size_t equals = item.find('=', colon + 1);
    if (equals == std::string_view::npos)
        return false;
    const std::string_view subslot_text = item.substr(0, colon);
    const std::string_view ifsubsys_text = item.substr(colon + 1, equals - colon - 1);
    uint32_t subslot = 0;
    uint32_t ifsubsys = 0;
    if (!parse_u32(subslot_text, subslot))
        return false;
    if (ifsubsys_text == "any")
        ifsubsys = CVN_NP_SIM_ANY;
    else if (!parse_u32(ifsubsys_text, ifsubsys))
        return false;
    if (!parse_u32(item.substr(equals + 1), type))
        return false;
    key = make_key(subslot, ifsubsys);
    return true;
}

bool parse_list(std::string_view list, Parsed &out, ListError &error)
{
    out.n = 0;
    if (list.empty())
        return true;
    for (;;) {
        const size_t comma = list.find(',');
        const std::string_view item = trim(list.substr(0, comma));
        uint64_t key = 0;
        uint32_t type = 0;
        if (!parse_item(item, key, type)) {
            error = {false, item};
            return false;
        }
        int i = 0;
        while (i < out.n && out.items[i].key != key)
            ++i;
        if (i == kMaxEntries) {
            error = {true, item};
            return false;
        }
        out.items[i] = {key, type, item};
        if (i == out.n)
            ++out.n;
        if (comma == std::string_view::npos)
            return true;
        list.remove_prefix(comma + 1);
    }
}

// Control characters in a message (an environment value may hold any)
// would break the one-line report; show them as '?'.
void flatten(char *text)
{
    for (; *text != '\0'; ++text)
        if (static_cast<unsigned char>(*text) < 0x20 || *text == 0x7F)
            *text = '?';
}

void describe(char *buffer, size_t size, const ListError &e)
{
    if (buffer == nullptr || size == 0)
        return;
    const int length = static_cast<int>(e.item.size());
    // A description longer than the caller's buffer is cut to it.
    if (e.no_room)
        (void)std::snprintf(buffer, size, "no room for item \"%.*s\" (at most %d keys)", length,
                            e.item.data(), kMaxEntries);
    else
        (void)std::snprintf(buffer, size,
                            "malformed item \"%.*s\" (expected SUBSLOT:IFSUBSYS=TYPE)", length,
                            e.item.data());
    flatten(buffer);
}

[[noreturn]] void reject_environment(const char *variable, const char *message)
{
    (void)std::fprintf(stderr, "cvn_np_sim: %s: %s\n", variable, message);
    std::exit(2);
}

// ---- The table (writers hold g.writer) --------------------------------------

int find_locked(uint64_t key, int count)
{
    for (int i = 0; i < count; ++i)
        if (g.entries[i].key.load(std::memory_order_relaxed) == key)
            return i;
    return -1;
}

int put_locked(uint64_t key, uint64_t answer)
{
    const int count = g.count.load(std::memory_order_relaxed);
    const int i = find_locked(key, count);
    if (i >= 0) {
        g.entries[i].answer.store(answer, std::memory_order_release);
        return 0;
    }
    if (count == kMaxEntries)
        return -1;
    g.entries[count].key.store(key, std::memory_order_relaxed);
    g.entries[count].answer.store(answer, std::memory_order_relaxed);
    g.count.store(count + 1, std::memory_order_release);
    return 0;
}

int put(uint64_t key, uint64_t answer)
{
    std::lock_guard lock(g.writer);
    return put_locked(key, answer);
}

// Adds every parsed item, or none when the new keys do not all fit.
bool apply(const Parsed &parsed, ListError &error)
{
    std::lock_guard lock(g.writer);
    int count = g.count.load(std::memory_order_relaxed);
    for (int i = 0; i < parsed.n; ++i) {
        if (find_locked(parsed.items[i].key, count) >= 0)
            continue;
        if (++count > kMaxEntries) {
            error = {true, parsed.items[i].item};
            return false;
        }
    }
    for (int i = 0; i < parsed.n; ++i)
        put_locked(parsed.items[i].key, make_answer(0, parsed.items[i].type));
    return true;
}

void read_environment()
{
    char message[512];
    uint32_t card_type = 0;
    const char *card_text = std::getenv(kCardTypeVar);
    const bool have_card = card_text != nullptr && *card_text != '\0';
    if (have_card && !parse_u32(card_text, card_type)) {
        (void)std::snprintf(message, sizeof message,
                            "malformed value \"%s\" (expected a C integer literal of 32 bits)",
                            card_text);
        flatten(message);
        reject_environment(kCardTypeVar, message);
    }
    const char *list = std::getenv(kIfsubsysVar);
    Parsed parsed;
    ListError error{};
    if (!parse_list(list != nullptr ? list : "", parsed, error) || !apply(parsed, error)) {
        describe(message, sizeof message, error);
        reject_environment(kIfsubsysVar, message);
    }
    if (have_card)
        g.card_type.store(card_type, std::memory_order_relaxed);
}

// The first call of anything here reads the environment once.
void ensure_environment_read() { std::call_once(g.environment_read, read_environment); }

} // namespace

extern "C" {

uint32_t platform_get_my_card_type(void)
{
    ensure_environment_read();
    g.card_type_queries.fetch_add(1, std::memory_order_relaxed);
    return g.card_type.load(std::memory_order_relaxed);
}

uint32_t rva_ifsubsys_get_info(const ifsubsys_id *id, ifsubsys_info *info)
{
    ensure_environment_read();
    g.ifsubsys_queries.fetch_add(1, std::memory_order_relaxed);
    if (id == nullptr || info == nullptr)
        return kNullArgumentStatus;
    if (const uint32_t status = g.fail_all.load(std::memory_order_relaxed))
        return status;
    const uint64_t key = make_key(id->subslot, id->ifsubsys);
    uint64_t answer = make_answer(0, CVN_NP_IFSUB_TYPE_NONE);
    const int count = g.count.load(std::memory_order_acquire);
    for (int i = 0; i < count; ++i) {
        if (g.entries[i].key.load(std::memory_order_relaxed) == key) {
            answer = g.entries[i].answer.load(std::memory_order_acquire);
            break;
        }
    }
    if (const auto status = static_cast<uint32_t>(answer >> 32))
        return status;
    *info = ifsubsys_info{0, static_cast<uint32_t>(answer), 0, 0};
    return 0;
}

void cvn_np_sim_reset(void)
{
    ensure_environment_read(); // so that a later first query cannot apply it
    std::lock_guard lock(g.writer);
    g.count.store(0, std::memory_order_release);
    g.card_type.store(CVN_NP_SIM_DEFAULT_CARD_TYPE, std::memory_order_relaxed);
    g.fail_all.store(0, std::memory_order_relaxed);
    g.card_type_queries.store(0, std::memory_order_relaxed);
    g.ifsubsys_queries.store(0, std::memory_order_relaxed);
}

void cvn_np_sim_load_environment(void)
{
    bool read_now = false;
    std::call_once(g.environment_read, [&read_now] {
        read_environment();
        read_now = true;
    });
    if (!read_now)
        read_environment();
}

void cvn_np_sim_set_card_type(uint32_t card_type)
{
    ensure_environment_read();
    g.card_type.store(card_type, std::memory_order_relaxed);
}

int cvn_np_sim_set_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t type)
{
    ensure_environment_read();
    return put(make_key(subslot, ifsubsys), make_answer(0, type));
}

int cvn_np_sim_fail_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t status)
{
    ensure_environment_read();
    if (status == 0)
        return -1;
    return put(make_key(subslot, ifsubsys), make_answer(status, 0));
}

void cvn_np_sim_fail_all(uint32_t status)
{
    ensure_environment_read();
    g.fail_all.store(status, std::memory_order_relaxed);
}

int cvn_np_sim_load_ifsubsys(const char *list, char *error, unsigned error_size)
{
    ensure_environment_read();
    Parsed parsed;
    ListError failure{};
    if (!parse_list(list != nullptr ? list : "", parsed, failure) || !apply(parsed, failure)) {
        describe(error, error_size, failure);
        return -1;
    }
    return 0;
}

uint32_t cvn_np_sim_card_type_queries(void)
{
    ensure_environment_read();
    return g.card_type_queries.load(std::memory_order_relaxed);
}

uint32_t cvn_np_sim_ifsubsys_queries(void)
{
    ensure_environment_read();
    return g.ifsubsys_queries.load(std::memory_order_relaxed);
}

} // extern "C"

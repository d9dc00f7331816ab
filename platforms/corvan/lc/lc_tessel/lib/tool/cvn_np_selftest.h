/*
 * cvn_np_selftest.h - the self-test's expected values, its test groups and
 * the small walkers the groups share.
 *
 * The self-test holds no expected values of its own: the set-up points the
 * test_* globals at the tables of the card's family (fenna or brisca) and
 * every group compares the library's answers with a direct walk over those
 * tables.
 */
#ifndef CVN_NP_SELFTEST_H
#define CVN_NP_SELFTEST_H

#include <stdint.h>

#include "cvn_np_lib.h"

/* ---- Expected values, written by test_cvn_np_lib_init ------------------- */

extern const np_info *test_np_info;
extern card_version test_version;
extern subslot_info test_subslot_info;
extern uint32_t test_np_ifsub_type_100ge;
extern uint32_t test_np_ifsub_type_40ge;
extern uint32_t test_np_ifsub_type_10ge;
extern const port_info *test_port_info_100ge;
extern const port_info *test_port_info_40ge;
extern const port_info *test_port_info_10ge;
extern const port_mapping_entry *test_port_map_100ge;
extern const port_mapping_entry *test_port_map_40ge;
extern const port_mapping_entry *test_port_map_10ge;
extern const port_mapping_entry *const *test_phys_map_100ge;
extern const port_mapping_entry *const *test_phys_map_40ge;
extern const port_mapping_entry *const *test_phys_map_10ge;
extern const port_mapping_entry *const *test_fplate_map_100ge;
extern const port_mapping_entry *const *test_fplate_map_40ge;
extern const port_mapping_entry *const *test_fplate_map_10ge;
extern const port_mapping_entry *const *test_np_port_map_100ge;
extern const port_mapping_entry *const *test_np_port_map_40ge;
extern const port_mapping_entry *const *test_np_port_map_10ge;

/* Non-zero when the set-up knows the tables of card_type's family. */
int test_card_has_expected_values(uint32_t card_type);

/* Points the globals above at the family's tables, prints where they are
 * and initialises the library for card_type.  Returns the library's status,
 * or CVN_NP_ERR_INVALID (writing nothing) for a card without expected
 * values. */
uint32_t test_cvn_np_lib_init(uint32_t card_type);

/* Runs every group for the card in `cardtype`; returns the error count. */
uint32_t test_cvn_np_lib_testcard(void);

/* ---- Test groups that are not a port walk ------------------------------ */

void test_nplib_card_info(void);
uint32_t test_cvn_np_port_info_get(void);
uint32_t test_cvn_np_complex_to_subslot(void);
uint32_t test_cvn_np_complex_to_np(void);

/* ---- What the groups share ------------------------------------------------ */

/* One module speed as the groups walk it. */
typedef struct test_speed {
    const char *word;       /* "100ge", "40ge", "10ge" in case lines */
    const char *short_word; /* "100g", "40g", "10g" in port-information lines */
    uint32_t ifsub_type;    /* passed to the aux_* calls */
    uint32_t port_type;     /* port-type code passed to the faceplate calls */
    uint32_t port_cage;     /* ports per cage, from test_np_info */
    const port_info *port_info;
    const port_mapping_entry *const *phys_map;
    const port_mapping_entry *const *fplate_map;
} test_speed;

#define TEST_SPEEDS 3

/* The speed i (0 100GE, 1 40GE, 2 10GE) from the current expected values. */
test_speed test_speed_get(int i);

/* The relation and the verdict of a case line, by whether the case failed. */
#define TEST_REL(bad) ((bad) ? "!=" : "=")
#define TEST_VERDICT(bad) ((bad) ? "ERROR" : "ok")

/* Prints the group header "<name> board type 0x%08x". */
void test_group_begin(const char *name);
/* Prints the group's "passed" or "has N failed cases" line; returns failed. */
uint32_t test_group_end(const char *name, uint32_t failed);

/* ---- The port walks ------------------------------------------------------- */

/* The answers a port-walk case asks for and compares, in the order its case
 * line shows them. */
#define TEST_NP 0x01u
#define TEST_NP_PORT 0x02u
#define TEST_FPLATE 0x04u
#define TEST_TYPE 0x08u
#define TEST_FRONT 0x10u
#define TEST_COUNT 0x20u /* the NP's NP-local ports of the speed */

/* What a case calls, and the position its line starts with. */
typedef enum test_ask {
    TEST_ASK_FRONT_PORT,    /* front port (subslot, cage, code), after its encoding */
    TEST_ASK_FRONT_SUBSLOT, /* subslot, front port (subslot, code) */
    TEST_ASK_FACE,          /* face port (subslot, cage, code) */
    TEST_ASK_NP_PORT,       /* np, cage, port (NP, the NP's cage, NP-local port) */
    TEST_ASK_FIRST,         /* np NP, for the NP's first port */
    TEST_ASK_COUNT,         /* np NP, for its number of NP-local ports */
} test_ask;

/* A port-walk group: a case per speed, subslot, cage and port, or for
 * TEST_ASK_FIRST and TEST_ASK_COUNT per speed, subslot and NP. */
typedef struct test_walk {
    const char *name;
    test_ask ask;
    const char *what; /* the answers' names in the case line */
    unsigned fields;  /* the answers asked for and compared */
    unsigned hex;     /* the answers shown as 0x%x, the others as %d */
    int code_dec;     /* the code shown in decimal: 0 never, 1 on ok lines, 2 always */
} test_walk;

/* Runs the group and prints its lines; returns its failed cases. */
uint32_t test_port_group(const test_walk *w);

#endif /* CVN_NP_SELFTEST_H */

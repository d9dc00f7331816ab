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

/* The library's answers of one case; a group zeroes them once at its start
 * and they keep the last answer written into them from case to case. */
typedef struct test_answers {
    uint32_t np;
    uint32_t np_port;
    uint32_t fplate_port;
    uint32_t port_type;
    uint32_t front;
} test_answers;

/* One case of the port walk: speed, subslot s, cage c, port p within the
 * cage, the NP n that owns the cage and the cage's place k among the NP's
 * cages, the front-port code and the table index of (c, p). */
typedef struct test_port_case {
    const test_speed *speed;
    uint32_t s;
    uint32_t c;
    uint32_t p;
    uint32_t n;
    uint32_t k;
    uint32_t code;
    uint32_t index;
} test_port_case;

/* A case routine: prints its case line and returns 1 for a failure. */
typedef uint32_t (*test_port_case_fn)(const test_port_case *pc, test_answers *a);

/* The case routines of the port-walk groups, named after what they ask. */
uint32_t test_case_front_np(const test_port_case *pc, test_answers *a);
uint32_t test_case_front_np_port(const test_port_case *pc, test_answers *a);
uint32_t test_case_front_port_type(const test_port_case *pc, test_answers *a);
uint32_t test_case_front_fplate(const test_port_case *pc, test_answers *a);
uint32_t test_case_front_mapping(const test_port_case *pc, test_answers *a);
uint32_t test_case_num_local_ports(const test_port_case *pc, test_answers *a);
uint32_t test_case_np_to_front(const test_port_case *pc, test_answers *a);
uint32_t test_case_np_to_fplate(const test_port_case *pc, test_answers *a);
uint32_t test_case_first_front(const test_port_case *pc, test_answers *a);
uint32_t test_case_first_fplate(const test_port_case *pc, test_answers *a);
uint32_t test_case_face_np(const test_port_case *pc, test_answers *a);
uint32_t test_case_face_np_port(const test_port_case *pc, test_answers *a);
uint32_t test_case_face_front(const test_port_case *pc, test_answers *a);
uint32_t test_case_face_mapping(const test_port_case *pc, test_answers *a);

/* The relation and the verdict of a case line, by whether the case failed. */
#define TEST_REL(bad) ((bad) ? "!=" : "=")
#define TEST_VERDICT(bad) ((bad) ? "ERROR" : "ok")

/* Prints the group header "<name> board type 0x%08x". */
void test_group_begin(const char *name);
/* Prints the group's "passed" or "has N failed cases" line; returns failed. */
uint32_t test_group_end(const char *name, uint32_t failed);
/* A whole group over the port walk (speed, subslot, cage, port); with
 * nps_only, one case per speed, subslot and NP, at the NP's first port. */
uint32_t test_port_group(const char *name, test_port_case_fn fn, int nps_only);

#endif /* CVN_NP_SELFTEST_H */

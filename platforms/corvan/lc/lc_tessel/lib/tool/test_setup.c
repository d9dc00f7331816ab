/*
 * test_setup.c - the self-test's expected values: the card type's family
 * tables, pointed at by the test_* globals, and the library's init.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_selftest.h"

const np_info *test_np_info;
card_version test_version;
subslot_info test_subslot_info;
uint32_t test_np_ifsub_type_100ge;
uint32_t test_np_ifsub_type_40ge;
uint32_t test_np_ifsub_type_10ge;
const port_info *test_port_info_100ge;
const port_info *test_port_info_40ge;
const port_info *test_port_info_10ge;
const port_mapping_entry *test_port_map_100ge;
const port_mapping_entry *test_port_map_40ge;
const port_mapping_entry *test_port_map_10ge;
const port_mapping_entry *const *test_phys_map_100ge;
const port_mapping_entry *const *test_phys_map_40ge;
const port_mapping_entry *const *test_phys_map_10ge;
const port_mapping_entry *const *test_fplate_map_100ge;
const port_mapping_entry *const *test_fplate_map_40ge;
const port_mapping_entry *const *test_fplate_map_10ge;
const port_mapping_entry *const *test_np_port_map_100ge;
const port_mapping_entry *const *test_np_port_map_40ge;
const port_mapping_entry *const *test_np_port_map_10ge;

/* One family's tables, in the order the set-up stores them. */
typedef struct test_family {
    const np_info *np_info;
    const port_info *port_info[TEST_SPEEDS]; /* 100G, 40G, 10G */
    const port_mapping_entry *port_map[TEST_SPEEDS];
    const port_mapping_entry *const *phys_map[TEST_SPEEDS];
    const port_mapping_entry *const *fplate_map[TEST_SPEEDS];
    const port_mapping_entry *const *np_port_map[TEST_SPEEDS];
} test_family;

static const test_family test_fenna = {
    &np_info_fenna,
    {port_info_fenna_100g, port_info_fenna_40g, port_info_fenna_10g},
    {cvn_np_port_mapping_fenna_100g, cvn_np_port_mapping_fenna_40g, cvn_np_port_mapping_fenna_10g},
    {phys_front_port_map_fenna_100g, phys_front_port_map_fenna_40g, phys_front_port_map_fenna_10g},
    {fplate_port_map_fenna_100g, fplate_port_map_fenna_40g, fplate_port_map_fenna_10g},
    {np_local_port_map_fenna_100g, np_local_port_map_fenna_40g, np_local_port_map_fenna_10g},
};

static const test_family test_brisca = {
    &np_info_brisca,
    {port_info_brisca_100g, port_info_brisca_40g, port_info_brisca_10g},
    {cvn_np_port_mapping_brisca_100g, cvn_np_port_mapping_brisca_40g,
     cvn_np_port_mapping_brisca_10g},
    {phys_front_port_map_brisca_100g, phys_front_port_map_brisca_40g,
     phys_front_port_map_brisca_10g},
    {fplate_port_map_brisca_100g, fplate_port_map_brisca_40g, fplate_port_map_brisca_10g},
    {np_local_port_map_brisca_100g, np_local_port_map_brisca_40g, np_local_port_map_brisca_10g},
};

/* Card types whose expected values we have.  The four-cage brisca cards
 * (0x3D0278..0x3D0281, 0x3D02B4..0x3D02BD) are checked against the
 * eight-cage tables too. */
static const struct {
    uint32_t first;
    uint32_t last;
    const test_family *family;
} test_card_types[] = {
    {0x3D0267u, 0x3D026Cu, &test_fenna},  {0x3D026Du, 0x3D0276u, &test_brisca},
    {0x3D0278u, 0x3D0281u, &test_brisca}, {0x3D02AAu, 0x3D02BDu, &test_brisca},
    {0x3D02C4u, 0x3D02C5u, &test_brisca},
};

static const test_family *test_family_of(uint32_t card_type)
{
    size_t i;

    for (i = 0; i < sizeof test_card_types / sizeof test_card_types[0]; i++) {
        if (card_type >= test_card_types[i].first && card_type <= test_card_types[i].last) {
            return test_card_types[i].family;
        }
    }
    return NULL;
}

int test_card_has_expected_values(uint32_t card_type) { return test_family_of(card_type) != NULL; }

static void test_point_at(const test_family *f)
{
    test_np_info = f->np_info;
    test_np_ifsub_type_100ge = CVN_NP_IFSUB_TYPE_100GE;
    test_np_ifsub_type_40ge = CVN_NP_IFSUB_TYPE_40GE;
    test_np_ifsub_type_10ge = CVN_NP_IFSUB_TYPE_10GE;

    test_port_info_100ge = f->port_info[0];
    test_port_map_100ge = f->port_map[0];
    test_phys_map_100ge = f->phys_map[0];
    test_fplate_map_100ge = f->fplate_map[0];
    test_np_port_map_100ge = f->np_port_map[0];

    test_port_info_40ge = f->port_info[1];
    test_port_map_40ge = f->port_map[1];
    test_phys_map_40ge = f->phys_map[1];
    test_fplate_map_40ge = f->fplate_map[1];
    test_np_port_map_40ge = f->np_port_map[1];

    test_port_info_10ge = f->port_info[2];
    test_port_map_10ge = f->port_map[2];
    test_phys_map_10ge = f->phys_map[2];
    test_fplate_map_10ge = f->fplate_map[2];
    test_np_port_map_10ge = f->np_port_map[2];

    test_version.ver_major = test_np_info->ver_major;
    test_version.ver_minor = test_np_info->ver_minor;
    /* spare is left as it is: nothing compares it. */
    test_subslot_info.num_of_subslots = test_np_info->num_subslot;
    test_subslot_info.max_of_ifsubsys_per_subslot = test_np_info->num_cage;
    test_subslot_info.max_ports_per_subslot = test_np_info->port_cage_10g;
}

/* The low 32 bits of an address, as the set-up prints them. */
#define TEST_ADDR(p) ((unsigned)(uint32_t)(uintptr_t)(const void *)(p))

uint32_t test_cvn_np_lib_init(uint32_t card_type)
{
    static const char me[] = "test_cvn_np_lib_init";
    const test_family *f;

    printf("%s board type 0x%08x\n", me, card_type);
    f = test_family_of(card_type);
    if (f == NULL) {
        return CVN_NP_ERR_INVALID;
    }
    test_point_at(f);

    /* One statement per line: each line reports its own line number. */
    /* clang-format off */
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_np_info", TEST_ADDR(test_np_info));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_port_info_100ge", TEST_ADDR(test_port_info_100ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_port_map_100ge", TEST_ADDR(test_port_map_100ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_phys_map_100ge", TEST_ADDR(test_phys_map_100ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_fplate_map_100ge", TEST_ADDR(test_fplate_map_100ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_np_port_map_100ge", TEST_ADDR(test_np_port_map_100ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_port_info_40ge", TEST_ADDR(test_port_info_40ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_port_map_40ge", TEST_ADDR(test_port_map_40ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_phys_map_40ge", TEST_ADDR(test_phys_map_40ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_fplate_map_40ge", TEST_ADDR(test_fplate_map_40ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_np_port_map_40ge", TEST_ADDR(test_np_port_map_40ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_port_info_10ge", TEST_ADDR(test_port_info_10ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_port_map_10ge", TEST_ADDR(test_port_map_10ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_phys_map_10ge", TEST_ADDR(test_phys_map_10ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_fplate_map_10ge", TEST_ADDR(test_fplate_map_10ge));
    printf("%s %d %s = 0x%08x\n", me, __LINE__, "test_np_port_map_10ge", TEST_ADDR(test_np_port_map_10ge));
    /* clang-format on */

    return cvn_np_lib_init(card_type);
}

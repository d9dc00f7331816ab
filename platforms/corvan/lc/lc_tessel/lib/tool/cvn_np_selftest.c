/*
 * cvn_np_selftest.c - the NP port-mapping library's self-test: what every
 * test group shares (header and summary lines, the three speeds, the port
 * walk), the group order of one test run, options, the coverage run over
 * one fenna and one brisca card, and the board run over the card the
 * platform reports.
 *
 * The exit status is 0 whatever the tests find: failures show in the case
 * lines, the groups' summaries and each run's "Completed" line.
 */
#define _POSIX_C_SOURCE 200809L /* getopt */

#include <stdint.h>
#include <stdio.h>
#include <unistd.h>

#include "cvn_np_lib.h"
#include "cvn_np_platform.h"
#include "cvn_np_selftest.h"

void test_group_begin(const char *name) { printf("%s board type 0x%08x\n", name, cardtype); }

uint32_t test_group_end(const char *name, uint32_t failed)
{
    if (failed == 0) {
        printf("  %s passed.\n", name);
    } else {
        printf("  %s has %d failed cases.\n", name, failed);
    }
    return failed;
}

test_speed test_speed_get(int i)
{
    const test_speed speeds[TEST_SPEEDS] = {
        {"100ge", "100g", test_np_ifsub_type_100ge, CVN_NP_PORT_TYPE_100GE,
         test_np_info->port_cage_100g, test_port_info_100ge, test_phys_map_100ge,
         test_fplate_map_100ge},
        {"40ge", "40g", test_np_ifsub_type_40ge, CVN_NP_PORT_TYPE_40GE, test_np_info->port_cage_40g,
         test_port_info_40ge, test_phys_map_40ge, test_fplate_map_40ge},
        {"10ge", "10g", test_np_ifsub_type_10ge, CVN_NP_PORT_TYPE_10GE, test_np_info->port_cage_10g,
         test_port_info_10ge, test_phys_map_10ge, test_fplate_map_10ge},
    };

    return speeds[i];
}

/* A group we have no check for yet: header and one line, nothing counted. */
static void test_not_implemented(const char *name)
{
    test_group_begin(name);
    printf("  %s not implemented yet\n", name);
}

/* The port-walk groups in their run order: name, what a case calls, the
 * names of the answers in its line, the answers it compares and those shown
 * in hex, and the code in decimal (1 on ok lines, 2 always). */
static const test_walk test_walks[] = {
    {"test_cvn_np_front_port_to_np", TEST_ASK_FRONT_PORT, "np", TEST_NP, 0, 0},
    {"test_cvn_np_front_port_to_np_port", TEST_ASK_FRONT_PORT, "np_port", TEST_NP_PORT, 0, 0},
    {"test_cvn_np_front_port_to_port_type", TEST_ASK_FRONT_SUBSLOT, "type", TEST_TYPE, 0, 0},
    {"test_cvn_np_front_port_to_face_plate_port", TEST_ASK_FRONT_SUBSLOT, "fpport, type",
     TEST_FPLATE | TEST_TYPE, TEST_FPLATE, 0},
    {"test_cvn_np_front_port_mapping_info", TEST_ASK_FRONT_SUBSLOT, "np, np_port, fpport, type",
     TEST_NP | TEST_NP_PORT | TEST_FPLATE | TEST_TYPE, TEST_FPLATE, 1},
    {"test_cvn_np_info_num_local_ports", TEST_ASK_COUNT, "num of ports", TEST_COUNT, 0, 0},
    {"test_cvn_np_info_to_front_port", TEST_ASK_NP_PORT, "front port", TEST_FRONT, 0, 0},
    {"test_cvn_np_info_to_fplate_porttype", TEST_ASK_NP_PORT, "face_port, type",
     TEST_FPLATE | TEST_TYPE, 0, 0},
    {"test_cvn_np_first_front_port_on_np", TEST_ASK_FIRST, "first front port", TEST_FRONT,
     TEST_FRONT, 0},
    {"test_cvn_np_first_fplate_porttype_on_np", TEST_ASK_FIRST, "first face port, type",
     TEST_FPLATE | TEST_TYPE, 0, 0},
    {"test_cvn_faceplate_porttype_to_np", TEST_ASK_FACE, "np", TEST_NP, 0, 0},
    {"test_cvn_faceplate_porttype_to_np_port", TEST_ASK_FACE, "np port", TEST_NP_PORT, 0, 0},
    {"test_cvn_faceplate_porttype_to_phys_port", TEST_ASK_FACE, "front port", TEST_FRONT,
     TEST_FRONT, 0},
    {"test_cvn_faceplate_porttype_mapping_info", TEST_ASK_FACE, "np, np port, front port",
     TEST_NP | TEST_NP_PORT | TEST_FRONT, TEST_FRONT, 2},
};

uint32_t test_cvn_np_lib_testcard(void)
{
    uint32_t errors = 0;
    size_t i;

    test_group_begin("test_cvn_np_lib_testcard");
    test_nplib_card_info();
    errors += test_cvn_np_port_info_get();
    test_not_implemented("test_cvn_np_subslot_info_get");
    test_not_implemented("test_cvn_np_port_info_subslot");
    for (i = 0; i < sizeof test_walks / sizeof test_walks[0]; i++) {
        errors += test_port_group(&test_walks[i]);
    }
    errors += test_cvn_np_complex_to_subslot();
    errors += test_cvn_np_complex_to_np();
    test_not_implemented("test_cvn_np_set_if_subsys_type");
    test_not_implemented("test_cvn_np_to_cpu_port_map");
    return errors;
}

/* One test run: the card type goes into cardtype, then the run's "Starting"
 * line (a format that takes the card type), the set-up and the groups. */
static void test_run_card(uint32_t card_type, const char *starting)
{
    uint32_t errors;

    cardtype = card_type;
    printf(starting, cardtype);
    (void)test_cvn_np_lib_init(cardtype);
    if (!test_card_has_expected_values(cardtype)) {
        /* The set-up wrote nothing and the library was left alone. */
        printf("No expected values for card 0x%08x: the self-test knows fenna and "
               "brisca cards only.\n",
               cardtype);
        return;
    }
    errors = test_cvn_np_lib_testcard();
    printf("Completed nplib tests for card 0x%08x with %d error.\n\n", cardtype, errors);
}

static void test_usage(const char *invoked_as)
{
    printf("\nUsage: %s [options]\n", invoked_as);
    printf("  -B | -b : board test\n");
    printf("  -C | -c : covarage test[default]\n");
    printf("  -H | -h : display usage help\n");
}

int main(int argc, char **argv)
{
    int board = 0;
    int opt;

    /* A library assertion aborts without flushing stdio: keep every report
     * line that was printed before it. */
    setvbuf(stdout, NULL, _IOLBF, 0);

    while ((opt = getopt(argc, argv, "BbCcHh")) != -1) {
        if (opt == 'H' || opt == 'h') {
            test_usage(argv[0]);
            return 0;
        } else if (opt == 'B' || opt == 'b') {
            board = 1;
        } else if (opt == 'C' || opt == 'c') {
            board = 0;
        }
        /* Other options are ignored; getopt has said its word. */
    }

    if (board) {
        test_run_card(platform_get_my_card_type(), "Starting board test for card 0x%08x.\n");
    } else {
        test_run_card(0x3D0267u, "Starting coverage test for FENNA(0x%08x).\n");
        test_run_card(0x3D0274u, "Starting coverage test for BRISCA(0x%08x).\n");
    }
    return 0;
}

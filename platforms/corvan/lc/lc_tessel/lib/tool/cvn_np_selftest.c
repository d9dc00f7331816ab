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

#define TEST_COVERAGE_FENNA 0x3D0267u
#define TEST_COVERAGE_BRISCA 0x3D0274u

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

/* NP n owns the cages n * cage_per_complex .. (n + 1) * cage_per_complex - 1,
 * and the cards the self-test knows have num_cage = num_complex *
 * cage_per_complex and a port in every cage at every speed: the walk over
 * the cages is the walk over each NP's cages, and NP n's first port sits at
 * index port_cage * cage_per_complex * n. */
uint32_t test_port_group(const char *name, test_port_case_fn fn, int nps_only)
{
    const uint32_t per_np = test_np_info->cage_per_complex;
    test_answers answers = {0, 0, 0, 0, 0};
    uint32_t failed = 0;
    int i;

    test_group_begin(name);
    for (i = 0; i < TEST_SPEEDS; i++) {
        test_speed sp = test_speed_get(i);
        test_port_case pc;

        pc.speed = &sp;
        for (pc.s = 0; pc.s < test_np_info->num_subslot; pc.s++) {
            for (pc.c = 0; pc.c < test_np_info->num_cage; pc.c++) {
                for (pc.p = 0; pc.p < sp.port_cage; pc.p++) {
                    pc.n = pc.c / per_np;
                    pc.k = pc.c % per_np;
                    pc.code = (pc.p & 0xFu) | ((pc.c * 16u) & 0xFFu);
                    pc.index = pc.c * sp.port_cage + pc.p;
                    if (!nps_only || (pc.k == 0 && pc.p == 0)) {
                        failed += fn(&pc, &answers);
                    }
                }
            }
        }
    }
    return test_group_end(name, failed);
}

/* A group we have no check for yet: header and one line, nothing counted. */
static void test_not_implemented(const char *name)
{
    test_group_begin(name);
    printf("  %s not implemented yet\n", name);
}

uint32_t test_cvn_np_lib_testcard(void)
{
    uint32_t errors = 0;

    test_group_begin("test_cvn_np_lib_testcard");
    test_nplib_card_info();
    errors += test_cvn_np_port_info_get();
    test_not_implemented("test_cvn_np_subslot_info_get");
    test_not_implemented("test_cvn_np_port_info_subslot");
    /* A port walk: its name, its case routine, 1 for each NP's first port only. */
    errors += test_port_group("test_cvn_np_front_port_to_np", test_case_front_np, 0);
    errors += test_port_group("test_cvn_np_front_port_to_np_port", test_case_front_np_port, 0);
    errors += test_port_group("test_cvn_np_front_port_to_port_type", test_case_front_port_type, 0);
    errors +=
        test_port_group("test_cvn_np_front_port_to_face_plate_port", test_case_front_fplate, 0);
    errors += test_port_group("test_cvn_np_front_port_mapping_info", test_case_front_mapping, 0);
    errors += test_port_group("test_cvn_np_info_num_local_ports", test_case_num_local_ports, 1);
    errors += test_port_group("test_cvn_np_info_to_front_port", test_case_np_to_front, 0);
    errors += test_port_group("test_cvn_np_info_to_fplate_porttype", test_case_np_to_fplate, 0);
    errors += test_port_group("test_cvn_np_first_front_port_on_np", test_case_first_front, 1);
    errors += test_port_group("test_cvn_np_first_fplate_porttype_on_np", test_case_first_fplate, 1);
    errors += test_port_group("test_cvn_faceplate_porttype_to_np", test_case_face_np, 0);
    errors += test_port_group("test_cvn_faceplate_porttype_to_np_port", test_case_face_np_port, 0);
    errors += test_port_group("test_cvn_faceplate_porttype_to_phys_port", test_case_face_front, 0);
    errors +=
        test_port_group("test_cvn_faceplate_porttype_mapping_info", test_case_face_mapping, 0);
    errors += test_cvn_np_complex_to_subslot();
    errors += test_cvn_np_complex_to_np();
    test_not_implemented("test_cvn_np_set_if_subsys_type");
    test_not_implemented("test_cvn_np_to_cpu_port_map");
    return errors;
}

/* One test run for the card type already stored in cardtype. */
static void test_run_card(void)
{
    uint32_t errors;

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

static void test_coverage_run(void)
{
    cardtype = TEST_COVERAGE_FENNA;
    printf("Starting coverage test for FENNA(0x%08x).\n", TEST_COVERAGE_FENNA);
    test_run_card();

    cardtype = TEST_COVERAGE_BRISCA;
    printf("Starting coverage test for BRISCA(0x%08x).\n", TEST_COVERAGE_BRISCA);
    test_run_card();
}

static void test_board_run(void)
{
    cardtype = platform_get_my_card_type();
    printf("Starting board test for card 0x%08x.\n", cardtype);
    test_run_card();
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
        test_board_run();
    } else {
        test_coverage_run();
    }
    return 0;
}

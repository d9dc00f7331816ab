/*
 * test_group_support.c - what every test group shares: header and summary
 * lines, the three speeds, and the port walk.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
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

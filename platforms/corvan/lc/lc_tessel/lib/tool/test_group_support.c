/*
 * test_group_support.c - what every test group shares: header and summary
 * lines, the three speeds, and the front-port loop.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

void test_group_begin(const char *name)
{
    printf("%s board type 0x%08x\n", name, cardtype);
}

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
    test_speed sp;

    switch (i) {
    case 0:
        sp.word = "100ge";
        sp.short_word = "100g";
        sp.ifsub_type = test_np_ifsub_type_100ge;
        sp.port_type = CVN_NP_PORT_TYPE_100GE;
        sp.port_cage = test_np_info->port_cage_100g;
        sp.port_info = test_port_info_100ge;
        sp.phys_map = test_phys_map_100ge;
        sp.fplate_map = test_fplate_map_100ge;
        break;
    case 1:
        sp.word = "40ge";
        sp.short_word = "40g";
        sp.ifsub_type = test_np_ifsub_type_40ge;
        sp.port_type = CVN_NP_PORT_TYPE_40GE;
        sp.port_cage = test_np_info->port_cage_40g;
        sp.port_info = test_port_info_40ge;
        sp.phys_map = test_phys_map_40ge;
        sp.fplate_map = test_fplate_map_40ge;
        break;
    default:
        sp.word = "10ge";
        sp.short_word = "10g";
        sp.ifsub_type = test_np_ifsub_type_10ge;
        sp.port_type = CVN_NP_PORT_TYPE_10GE;
        sp.port_cage = test_np_info->port_cage_10g;
        sp.port_info = test_port_info_10ge;
        sp.phys_map = test_phys_map_10ge;
        sp.fplate_map = test_fplate_map_10ge;
        break;
    }
    return sp;
}

uint32_t test_front_port_group(const char *name, test_port_case_fn fn)
{
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
                    pc.code = (pc.p & 0xFu) | ((pc.c * 16u) & 0xFFu);
                    pc.index = pc.c * sp.port_cage + pc.p;
                    failed += fn(&pc, &answers);
                }
            }
        }
    }
    return test_group_end(name, failed);
}

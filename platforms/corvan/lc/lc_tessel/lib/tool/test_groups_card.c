/*
 * test_groups_card.c - the card summary, the port-information group and the
 * complex groups.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

/* The card summary: the expected np_info record and subslot info field by
 * field, then three checks that print ok!/ERROR! and count nothing. */
void test_nplib_card_info(void)
{
    const np_info *n = test_np_info;
    uint32_t how_many = cvn_np_how_many();
    uint32_t chips = cvn_np_chip_how_many();
    const card_version *version = cvn_np_version_get();
    int bad;

    test_group_begin("test_nplib_card_info");
    printf("  board np info:\n");
    printf("    sw_version        = %d\n", n->sw_version);
    printf("    sw_status         = %d\n", n->sw_status);
    printf("    num_np            = %d\n", n->num_np);
    printf("    num_complex       = %d\n", n->num_complex);
    printf("    np_per_complex    = %d\n", n->np_per_complex);
    printf("    num_cage          = %d\n", n->num_cage);
    printf("    cage_per_complex  = %d\n", n->cage_per_complex);
    printf("    ver_major         = %d\n", n->ver_major);
    printf("    ver_minor         = %c\n", n->ver_minor);
    printf("    max_mtu           = %d\n", n->max_mtu);
    printf("    max_fpport_100g   = %d\n", n->max_fpport_100g);
    printf("    max_fpport_40g    = %d\n", n->max_fpport_40g);
    printf("    max_fpport_10g    = %d\n", n->max_fpport_10g);
    printf("    num_subslot       = %d\n", n->num_subslot);
    printf("    max_port_cage     = %d\n", n->max_port_cage);
    printf("    port_subslot_100g = %d\n", n->port_subslot_100g);
    printf("    port_subslot_40g  = %d\n", n->port_subslot_40g);
    printf("    port_subslot_10g  = %d\n", n->port_subslot_10g);
    printf("    port_cage_100g    = %d\n", n->port_cage_100g);
    printf("    port_cage_40g     = %d\n", n->port_cage_40g);
    printf("    port_cage_10g     = %d\n\n", n->port_cage_10g);

    printf("\n  board subslot info:\n");
    printf("    num_of_subslots       = %d\n", test_subslot_info.num_of_subslots);
    printf("    max_of_ifsubsys_per_subslot = %d\n", test_subslot_info.max_of_ifsubsys_per_subslot);
    printf("    max_ports_per_subslot = %d\n", test_subslot_info.max_ports_per_subslot);

    bad = how_many != n->num_complex;
    printf("  testing cvn_np_how_many: %d %s %d, %s!\n", how_many, TEST_REL(bad), n->num_complex,
           TEST_VERDICT(bad));
    bad = chips != n->num_np;
    printf("  testing cvn_np_chip_how_many: %d %s %d, %s!\n", chips, TEST_REL(bad), n->num_np,
           TEST_VERDICT(bad));

    if (version == NULL) {
        printf("  testing cvn_np_version_get: cant get NP version. ERROR!\n");
    } else {
        bad = version->ver_major != test_version.ver_major ||
              version->ver_minor != test_version.ver_minor;
        printf("  testing cvn_np_version_get: %d.%c %s %d.%c %s!\n", version->ver_major,
               version->ver_minor, TEST_REL(bad), test_version.ver_major, test_version.ver_minor,
               TEST_VERDICT(bad));
    }
}

/* Every cage is expected to report the family's one record for the speed. */
uint32_t test_cvn_np_port_info_get(void)
{
    static const char name[] = "test_cvn_np_port_info_get";
    uint32_t failed = 0;
    uint32_t s, c;
    int i;

    test_group_begin(name);
    for (i = 0; i < TEST_SPEEDS; i++) {
        test_speed sp = test_speed_get(i);

        for (s = 0; s < test_np_info->num_subslot; s++) {
            for (c = 0; c < test_np_info->num_cage; c++) {
                const port_info *got = aux_cvn_np_port_info_get(s, c, sp.ifsub_type);
                uint16_t got_ports = (uint16_t)got->num_ports;
                uint16_t exp_ports = (uint16_t)sp.port_info->num_ports;
                int bad = got_ports != exp_ports || got->port_type != sp.port_info->port_type;

                printf("  %s subslot, cage (%d, %d) port info (%d, %d) %s (%d, %d) %s.\n",
                       sp.short_word, s, c, got_ports, got->port_type, TEST_REL(bad), exp_ports,
                       sp.port_info->port_type, TEST_VERDICT(bad));
                failed += (uint32_t)bad;
            }
        }
    }
    return test_group_end(name, failed);
}

/* Every complex is expected in subslot 0. */
uint32_t test_cvn_np_complex_to_subslot(void)
{
    static const char name[] = "test_cvn_np_complex_to_subslot";
    uint32_t failed = 0;
    uint32_t n;

    test_group_begin(name);
    for (n = 0; n < test_np_info->num_complex; n++) {
        uint32_t got = cvn_np_complex_to_subslot((uint8_t)n);

        printf("  np %d subslot %d %s 0 %s.\n", n, got, TEST_REL(got != 0), TEST_VERDICT(got != 0));
        failed += got != 0;
    }
    return test_group_end(name, failed);
}

/* Ingress expects the complex's first NP, egress the one after it; with one
 * NP per complex both are the complex's only NP. */
uint32_t test_cvn_np_complex_to_np(void)
{
    static const char name[] = "test_cvn_np_complex_to_np";
    uint32_t per = test_np_info->np_per_complex;
    uint32_t failed = 0;
    uint32_t c;
    int ingress;

    test_group_begin(name);
    for (c = 0; c < test_np_info->num_complex; c++) {
        for (ingress = 1; ingress >= 0; ingress--) {
            uint32_t got = cvn_np_complex_to_np((uint8_t)c, (uint32_t)ingress);
            uint32_t expected = (ingress || per == 1) ? per * c : c * per + 1;
            int bad = got != expected;

            printf("  %s np complex %d np %d %s %d %s.\n", ingress ? "ingress" : "egress", c, got,
                   TEST_REL(bad), expected, TEST_VERDICT(bad));
            failed += (uint32_t)bad;
        }
    }
    return test_group_end(name, failed);
}

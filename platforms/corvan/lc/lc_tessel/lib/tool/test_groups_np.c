/*
 * test_groups_np.c - the NP groups (which start from an NP and an NP-local
 * port) and the complex groups.  The NP groups walk the ports like the
 * front-port groups, test_port_group giving each case its NP n and the NP's
 * cage k; the expected entry is the phys-map entry at the case's index.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

/* Every NP is expected to have cage_per_complex cages' worth of ports. */
uint32_t test_case_num_local_ports(const test_port_case *pc, test_answers *a)
{
    uint32_t expected = test_np_info->cage_per_complex * pc->speed->port_cage;
    uint32_t got = aux_cvn_np_info_num_local_ports(pc->s, pc->n, pc->speed->ifsub_type);
    int bad = got != expected;

    (void)a;
    printf("  %s np %d num of ports %d %s %d %s.\n", pc->speed->word, pc->n, got, TEST_REL(bad),
           expected, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

/* The NP-local port asked about is the phys-map entry's. */
uint32_t test_case_np_to_front(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    aux_cvn_np_info_to_mapping_info(pc->n, e->np_port, pc->speed->ifsub_type, &a->front, NULL,
                                    NULL);
    bad = a->front != e->phys_front_port;
    printf("  %s np, cage, port (%d, %d, %d) front port %d %s %d %s.\n", pc->speed->word, pc->n,
           pc->k, e->np_port, a->front, TEST_REL(bad), e->phys_front_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_np_to_fplate(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    aux_cvn_np_info_to_mapping_info(pc->n, e->np_port, pc->speed->ifsub_type, NULL, &a->fplate_port,
                                    &a->port_type);
    bad = a->fplate_port != e->fplate_port || a->port_type != e->port_type;
    printf("  %s np, cage, port (%d, %d, %d) face_port, type (%d, %d) %s (%d, %d) %s.\n",
           pc->speed->word, pc->n, pc->k, e->np_port, a->fplate_port, a->port_type, TEST_REL(bad),
           e->fplate_port, e->port_type, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

/* The expected entry is the NP's first port. */
uint32_t test_case_first_front(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    (void)aux_cvn_np_first_port_on_np(pc->n, 0, pc->speed->ifsub_type, &a->front, NULL, NULL);
    bad = a->front != e->phys_front_port;
    printf("  %s np %d first front port 0x%x %s 0x%x %s.\n", pc->speed->word, pc->n, a->front,
           TEST_REL(bad), e->phys_front_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_first_fplate(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    (void)aux_cvn_np_first_port_on_np(pc->n, 0, pc->speed->ifsub_type, NULL, &a->fplate_port,
                                      &a->port_type);
    bad = a->fplate_port != e->fplate_port || a->port_type != e->port_type;
    printf("  %s np %d first face port, type (%d, %d) %s (%d, %d) %s.\n", pc->speed->word, pc->n,
           a->fplate_port, a->port_type, TEST_REL(bad), e->fplate_port, e->port_type,
           TEST_VERDICT(bad));
    return (uint32_t)bad;
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

    test_group_begin(name);
    for (c = 0; c < test_np_info->num_complex; c++) {
        uint32_t ingress = cvn_np_complex_to_np((uint8_t)c, 1);
        uint32_t egress;
        uint32_t expected = per * c;
        int bad;

        bad = ingress != expected;
        printf("  ingress np complex %d np %d %s %d %s.\n", c, ingress, TEST_REL(bad), expected,
               TEST_VERDICT(bad));
        failed += (uint32_t)bad;

        egress = cvn_np_complex_to_np((uint8_t)c, 0);
        expected = (per == 1) ? c : c * per + 1;
        bad = egress != expected;
        printf("  egress np complex %d np %d %s %d %s.\n", c, egress, TEST_REL(bad), expected,
               TEST_VERDICT(bad));
        failed += (uint32_t)bad;
    }
    return test_group_end(name, failed);
}

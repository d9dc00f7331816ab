/*
 * test_groups_front.c - the front-port cases, then the faceplate cases.
 *
 * A front-port case asks aux_cvn_np_front_port_to_mapping_info (cage, code,
 * speed's ifsub type) and compares the outputs its group covers with the
 * phys-map entry at the case's index.  A faceplate case names the faceplate
 * port by the same 8-bit code, asks aux_cvn_faceplate_to_mapping_info (cage,
 * code, the speed's port-type code) and expects the faceplate map's entry
 * at the case's index.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

/* The library's own encoding of the case's position; printed only. */
static void test_print_encoding(const test_port_case *pc)
{
    uint32_t f = cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port((uint16_t)pc->s, pc->c, pc->p);

    printf("subslot %d ifsubsys %d type 0x%08x port %d phys_front_port 0x%08x\n", pc->s, pc->c,
           pc->speed->ifsub_type, pc->p, f);
}

uint32_t test_case_front_np(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    test_print_encoding(pc);
    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, &a->np, NULL,
                                          NULL, NULL);
    bad = a->np != e->np;
    printf("  %s front port (%d, %d, 0x%x) np %d %s %d %s.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np, TEST_REL(bad), e->np, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_front_np_port(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    test_print_encoding(pc);
    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, NULL, &a->np_port,
                                          NULL, NULL);
    bad = a->np_port != e->np_port;
    printf("  %s front port (%d, %d, 0x%x) np_port %d %s %d %s.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np_port, TEST_REL(bad), e->np_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_front_port_type(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, NULL, NULL, NULL,
                                          &a->port_type);
    bad = a->port_type != e->port_type;
    printf("  %s subslot, front port (%d, 0x%x) type %d %s %d %s.\n", pc->speed->word, pc->s,
           pc->code, a->port_type, TEST_REL(bad), e->port_type, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_front_fplate(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, NULL, NULL,
                                          &a->fplate_port, &a->port_type);
    bad = a->fplate_port != e->fplate_port || a->port_type != e->port_type;
    printf("  %s subslot, front port (%d, 0x%x) fpport, type (0x%x, %d) %s (0x%x, %d) %s.\n",
           pc->speed->word, pc->s, pc->code, a->fplate_port, a->port_type, TEST_REL(bad),
           e->fplate_port, e->port_type, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_front_mapping(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->phys_map[pc->index];
    int bad;

    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, &a->np,
                                          &a->np_port, &a->fplate_port, &a->port_type);
    bad = a->np != e->np || a->np_port != e->np_port || a->fplate_port != e->fplate_port ||
          a->port_type != e->port_type;
    /* The ok line shows the code in decimal. */
    printf(bad ? "  %s subslot, front port (%d, 0x%x) np, np_port, fpport, type "
                 "(%d, %d, 0x%x, %d) %s (%d, %d, 0x%x, %d) %s.\n"
               : "  %s subslot, front port (%d, %d) np, np_port, fpport, type "
                 "(%d, %d, 0x%x, %d) %s (%d, %d, 0x%x, %d) %s.\n",
           pc->speed->word, pc->s, pc->code, a->np, a->np_port, a->fplate_port, a->port_type,
           TEST_REL(bad), e->np, e->np_port, e->fplate_port, e->port_type, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_face_np(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->fplate_map[pc->index];
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, &a->np, NULL, NULL);
    bad = a->np != e->np;
    printf("  %s face port (%d, %d, 0x%x) np %d %s %d %s.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np, TEST_REL(bad), e->np, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_face_np_port(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->fplate_map[pc->index];
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, NULL, &a->np_port,
                                      NULL);
    bad = a->np_port != e->np_port;
    printf("  %s face port (%d, %d, 0x%x) np port %d %s %d %s.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np_port, TEST_REL(bad), e->np_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

uint32_t test_case_face_front(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->fplate_map[pc->index];
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, NULL, NULL, &a->front);
    bad = a->front != e->phys_front_port;
    printf("  %s face port (%d, %d, 0x%x) front port 0x%x %s 0x%x %s.\n", pc->speed->word, pc->s,
           pc->c, pc->code, a->front, TEST_REL(bad), e->phys_front_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

/* Both lines of this group show the code in decimal. */
uint32_t test_case_face_mapping(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = pc->speed->fplate_map[pc->index];
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, &a->np, &a->np_port,
                                      &a->front);
    bad = a->np != e->np || a->np_port != e->np_port || a->front != e->phys_front_port;
    printf("  %s face port (%d, %d, %d) np, np port, front port (%d, %d, 0x%x) %s "
           "(%d, %d, 0x%x) %s.\n",
           pc->speed->word, pc->s, pc->c, pc->code, a->np, a->np_port, a->front, TEST_REL(bad),
           e->np, e->np_port, e->phys_front_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

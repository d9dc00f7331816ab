/*
 * test_groups_front.c - the front-port groups.  Every case asks
 * aux_cvn_np_front_port_to_mapping_info (cage, code, speed's ifsub type)
 * and compares the outputs its group covers with the phys-map entry at the
 * case's index.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

static const port_mapping_entry *test_phys_entry(const test_port_case *pc)
{
    return pc->speed->phys_map[pc->index];
}

/* The library's own encoding of the case's position; printed only. */
static void test_print_encoding(const test_port_case *pc)
{
    uint32_t f = cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port((uint16_t)pc->s, pc->c, pc->p);

    printf("subslot %d ifsubsys %d type 0x%08x port %d phys_front_port 0x%08x\n", pc->s, pc->c,
           pc->speed->ifsub_type, pc->p, f);
}

static uint32_t test_case_front_np(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_phys_entry(pc);

    test_print_encoding(pc);
    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, &a->np, NULL,
                                          NULL, NULL);
    if (a->np != e->np) {
        printf("  %s front port (%d, %d, 0x%x) np %d != %d ERROR.\n", pc->speed->word, pc->s, pc->c,
               pc->code, a->np, e->np);
        return 1;
    }
    printf("  %s front port (%d, %d, 0x%x) np %d = %d ok.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np, a->np);
    return 0;
}

static uint32_t test_case_front_np_port(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_phys_entry(pc);

    test_print_encoding(pc);
    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, NULL, &a->np_port,
                                          NULL, NULL);
    if (a->np_port != e->np_port) {
        printf("  %s front port (%d, %d, 0x%x) np_port %d != %d ERROR.\n", pc->speed->word, pc->s,
               pc->c, pc->code, a->np_port, e->np_port);
        return 1;
    }
    printf("  %s front port (%d, %d, 0x%x) np_port %d = %d ok.\n", pc->speed->word, pc->s, pc->c,
           pc->code, e->np_port, e->np_port);
    return 0;
}

static uint32_t test_case_front_port_type(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_phys_entry(pc);

    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, NULL, NULL, NULL,
                                          &a->port_type);
    if (a->port_type != e->port_type) {
        printf("  %s subslot, front port (%d, 0x%x) type %d != %d ERROR.\n", pc->speed->word, pc->s,
               pc->code, a->port_type, e->port_type);
        return 1;
    }
    printf("  %s subslot, front port (%d, 0x%x) type %d = %d ok.\n", pc->speed->word, pc->s,
           pc->code, e->port_type, e->port_type);
    return 0;
}

static uint32_t test_case_front_fplate(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_phys_entry(pc);

    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, NULL, NULL,
                                          &a->fplate_port, &a->port_type);
    if (a->fplate_port != e->fplate_port || a->port_type != e->port_type) {
        printf("  %s subslot, front port (%d, 0x%x) fpport, type (0x%x, %d) != (0x%x, %d) "
               "ERROR.\n",
               pc->speed->word, pc->s, pc->code, a->fplate_port, a->port_type, e->fplate_port,
               e->port_type);
        return 1;
    }
    printf("  %s subslot, front port (%d, 0x%x) fpport, type (0x%x, %d) = (0x%x, %d) ok.\n",
           pc->speed->word, pc->s, pc->code, e->fplate_port, e->port_type, e->fplate_port,
           e->port_type);
    return 0;
}

static uint32_t test_case_front_mapping(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_phys_entry(pc);

    aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, pc->speed->ifsub_type, &a->np,
                                          &a->np_port, &a->fplate_port, &a->port_type);
    if (a->np != e->np || a->np_port != e->np_port || a->fplate_port != e->fplate_port ||
        a->port_type != e->port_type) {
        printf("  %s subslot, front port (%d, 0x%x) np, np_port, fpport, type "
               "(%d, %d, 0x%x, %d) != (%d, %d, 0x%x, %d) ERROR.\n",
               pc->speed->word, pc->s, pc->code, a->np, a->np_port, a->fplate_port, a->port_type,
               e->np, e->np_port, e->fplate_port, e->port_type);
        return 1;
    }
    /* The ok line shows the code in decimal. */
    printf("  %s subslot, front port (%d, %d) np, np_port, fpport, type "
           "(%d, %d, 0x%x, %d) = (%d, %d, 0x%x, %d) ok.\n",
           pc->speed->word, pc->s, pc->code, e->np, e->np_port, e->fplate_port, e->port_type, e->np,
           e->np_port, e->fplate_port, e->port_type);
    return 0;
}

uint32_t test_cvn_np_front_port_to_np(void)
{
    return test_front_port_group("test_cvn_np_front_port_to_np", test_case_front_np);
}

uint32_t test_cvn_np_front_port_to_np_port(void)
{
    return test_front_port_group("test_cvn_np_front_port_to_np_port", test_case_front_np_port);
}

uint32_t test_cvn_np_front_port_to_port_type(void)
{
    return test_front_port_group("test_cvn_np_front_port_to_port_type", test_case_front_port_type);
}

uint32_t test_cvn_np_front_port_to_face_plate_port(void)
{
    return test_front_port_group("test_cvn_np_front_port_to_face_plate_port",
                                 test_case_front_fplate);
}

uint32_t test_cvn_np_front_port_mapping_info(void)
{
    return test_front_port_group("test_cvn_np_front_port_mapping_info", test_case_front_mapping);
}

/*
 * test_groups_faceplate.c - the faceplate groups.  They walk the cards'
 * ports like the front-port groups, name each faceplate port by the same
 * 8-bit code and ask aux_cvn_faceplate_to_mapping_info (cage, code, the
 * speed's port-type code); the expected entry is the faceplate map's entry
 * at the case's index.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

static const port_mapping_entry *test_fplate_entry(const test_port_case *pc)
{
    return pc->speed->fplate_map[pc->index];
}

static uint32_t test_case_face_np(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_fplate_entry(pc);
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, &a->np, NULL, NULL);
    bad = a->np != e->np;
    printf("  %s face port (%d, %d, 0x%x) np %d %s %d %s.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np, TEST_REL(bad), e->np, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

static uint32_t test_case_face_np_port(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_fplate_entry(pc);
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, NULL, &a->np_port,
                                      NULL);
    bad = a->np_port != e->np_port;
    printf("  %s face port (%d, %d, 0x%x) np port %d %s %d %s.\n", pc->speed->word, pc->s, pc->c,
           pc->code, a->np_port, TEST_REL(bad), e->np_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

static uint32_t test_case_face_front(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_fplate_entry(pc);
    int bad;

    aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, pc->speed->port_type, NULL, NULL, &a->front);
    bad = a->front != e->phys_front_port;
    printf("  %s face port (%d, %d, 0x%x) front port 0x%x %s 0x%x %s.\n", pc->speed->word, pc->s,
           pc->c, pc->code, a->front, TEST_REL(bad), e->phys_front_port, TEST_VERDICT(bad));
    return (uint32_t)bad;
}

/* Both lines of this group show the code in decimal. */
static uint32_t test_case_face_mapping(const test_port_case *pc, test_answers *a)
{
    const port_mapping_entry *e = test_fplate_entry(pc);
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

uint32_t test_cvn_faceplate_porttype_to_np(void)
{
    return test_port_group("test_cvn_faceplate_porttype_to_np", test_case_face_np, 0);
}

uint32_t test_cvn_faceplate_porttype_to_np_port(void)
{
    return test_port_group("test_cvn_faceplate_porttype_to_np_port", test_case_face_np_port, 0);
}

uint32_t test_cvn_faceplate_porttype_to_phys_port(void)
{
    return test_port_group("test_cvn_faceplate_porttype_to_phys_port", test_case_face_front, 0);
}

uint32_t test_cvn_faceplate_porttype_mapping_info(void)
{
    return test_port_group("test_cvn_faceplate_porttype_mapping_info", test_case_face_mapping, 0);
}

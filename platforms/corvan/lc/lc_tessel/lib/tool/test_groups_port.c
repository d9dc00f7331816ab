/*
 * test_groups_port.c - the port walks: the front-port, NP and faceplate
 * groups.  A case asks one call for the answers its group compares and
 * expects, at the case's index, the faceplate map's entry (a faceplate case
 * names its faceplate port by the front port's 8-bit code) or the phys-map
 * entry (an NP case asks about that entry's NP-local port; a first-port
 * case sits at its NP's first port); an NP's count of NP-local ports is
 * expected to be cage_per_complex cages' worth of ports.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

/* The library's answers of one case; a group zeroes them once at its start
 * and they keep the last answer written into them from case to case. */
typedef struct test_answers {
    uint32_t np;
    uint32_t np_port;
    uint32_t fplate_port;
    uint32_t port_type;
    uint32_t front;
    uint32_t count;
} test_answers;

/* One case of the port walk: speed, subslot s, cage c, port p within the
 * cage, the NP n that owns the cage and the cage's place k among the NP's
 * cages, the front-port code and the table index of (c, p). */
typedef struct test_port_case {
    const test_speed *speed;
    uint32_t s;
    uint32_t c;
    uint32_t p;
    uint32_t n;
    uint32_t k;
    uint32_t code;
    uint32_t index;
} test_port_case;

/* The values of `fields` in their order, in parentheses when there are
 * several; those of `hex` as 0x%x. */
static void test_print_values(const uint32_t *value, unsigned fields, unsigned hex)
{
    const int several = (fields & (fields - 1)) != 0;
    const char *sep = several ? "(" : "";
    int i;

    for (i = 0; fields >> i != 0; i++) {
        if ((fields >> i) & 1u) {
            printf((hex >> i) & 1u ? "%s0x%x" : "%s%d", sep, value[i]);
            sep = ", ";
        }
    }
    printf("%s", several ? ")" : "");
}

/* Asks the call of the walk for the answers it compares, compares them and
 * prints the case line. */
static uint32_t test_run_case(const test_walk *w, const test_port_case *pc, test_answers *a)
{
    const test_speed *sp = pc->speed;
    const port_mapping_entry *e =
        (w->ask == TEST_ASK_FACE ? sp->fplate_map : sp->phys_map)[pc->index];
    const uint32_t count = test_np_info->cage_per_complex * sp->port_cage;
    uint32_t *np = (w->fields & TEST_NP) ? &a->np : NULL;
    uint32_t *np_port = (w->fields & TEST_NP_PORT) ? &a->np_port : NULL;
    uint32_t *fplate = (w->fields & TEST_FPLATE) ? &a->fplate_port : NULL;
    uint32_t *type = (w->fields & TEST_TYPE) ? &a->port_type : NULL;
    uint32_t *front = (w->fields & TEST_FRONT) ? &a->front : NULL;
    int bad = 0;
    int dec;
    int i;

    if (w->ask == TEST_ASK_FRONT_PORT) { /* the library's own encoding, printed only */
        printf("subslot %d ifsubsys %d type 0x%08x port %d phys_front_port 0x%08x\n", pc->s, pc->c,
               sp->ifsub_type, pc->p,
               cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port((uint16_t)pc->s, pc->c, pc->p));
    }
    if (w->ask == TEST_ASK_FRONT_PORT || w->ask == TEST_ASK_FRONT_SUBSLOT) {
        aux_cvn_np_front_port_to_mapping_info(pc->c, pc->code, sp->ifsub_type, np, np_port, fplate,
                                              type);
    } else if (w->ask == TEST_ASK_FACE) {
        aux_cvn_faceplate_to_mapping_info(pc->c, pc->code, sp->port_type, np, np_port, front);
    } else if (w->ask == TEST_ASK_NP_PORT) {
        aux_cvn_np_info_to_mapping_info(pc->n, e->np_port, sp->ifsub_type, front, fplate, type);
    } else if (w->ask == TEST_ASK_FIRST) {
        (void)aux_cvn_np_first_port_on_np(pc->n, 0, sp->ifsub_type, front, fplate, type);
    } else {
        a->count = aux_cvn_np_info_num_local_ports(pc->s, pc->n, sp->ifsub_type);
    }

    const uint32_t got[] = {a->np, a->np_port, a->fplate_port, a->port_type, a->front, a->count};
    const uint32_t want[] = {e->np,        e->np_port,         e->fplate_port,
                             e->port_type, e->phys_front_port, count};
    for (i = 0; w->fields >> i != 0; i++) {
        bad |= ((w->fields >> i) & 1u) != 0 && got[i] != want[i];
    }
    dec = w->code_dec == 2 || (w->code_dec == 1 && !bad);
    if (w->ask == TEST_ASK_FRONT_PORT || w->ask == TEST_ASK_FACE) {
        printf(dec ? "  %s %s port (%d, %d, %d) %s " : "  %s %s port (%d, %d, 0x%x) %s ", sp->word,
               w->ask == TEST_ASK_FACE ? "face" : "front", pc->s, pc->c, pc->code, w->what);
    } else if (w->ask == TEST_ASK_FRONT_SUBSLOT) {
        printf(dec ? "  %s subslot, front port (%d, %d) %s "
                   : "  %s subslot, front port (%d, 0x%x) %s ",
               sp->word, pc->s, pc->code, w->what);
    } else if (w->ask == TEST_ASK_NP_PORT) {
        printf("  %s np, cage, port (%d, %d, %d) %s ", sp->word, pc->n, pc->k, e->np_port, w->what);
    } else {
        printf("  %s np %d %s ", sp->word, pc->n, w->what);
    }
    test_print_values(got, w->fields, w->hex);
    printf(" %s ", TEST_REL(bad));
    test_print_values(want, w->fields, w->hex);
    printf(" %s.\n", TEST_VERDICT(bad));
    return (uint32_t)bad;
}

/* NP n owns the cages n * cage_per_complex .. (n + 1) * cage_per_complex - 1,
 * and the cards the self-test knows have num_cage = num_complex *
 * cage_per_complex and a port in every cage at every speed: the walk over
 * the cages is the walk over each NP's cages, and NP n's first port sits at
 * index port_cage * cage_per_complex * n. */
uint32_t test_port_group(const test_walk *w)
{
    const uint32_t per_np = test_np_info->cage_per_complex;
    const int nps_only = w->ask == TEST_ASK_FIRST || w->ask == TEST_ASK_COUNT;
    test_answers answers = {0, 0, 0, 0, 0, 0};
    uint32_t failed = 0;
    int i;

    test_group_begin(w->name);
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
                        failed += test_run_case(w, &pc, &answers);
                    }
                }
            }
        }
    }
    return test_group_end(w->name, failed);
}

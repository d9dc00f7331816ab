/*
 * test_groups_np.c - the NP groups (which start from an NP and an NP-local
 * port) and the complex groups.
 *
 * NP n owns the cages n * cage_per_complex .. (n + 1) * cage_per_complex - 1;
 * the phys map of a speed holds their ports in that order, so NP n's k-th
 * cage and port p sit at (cage_per_complex * n + k) * port_cage + p, and its
 * first port at port_cage * cage_per_complex * n.
 */
#include <stdint.h>
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_selftest.h"

/* One case of an NP group: speed, subslot s, NP n, its cage k, the NP-local port q and
 * the expected entry. */
typedef struct test_np_case {
    const test_speed *speed;
    uint32_t s;
    uint32_t n;
    uint32_t k;
    uint32_t q;
    const port_mapping_entry *entry;
} test_np_case;

typedef uint32_t (*test_np_case_fn)(const test_np_case *nc, test_answers *a);

/* A group with one case per speed, subslot and NP; the expected entry is
 * the NP's first port. */
static uint32_t test_np_group(const char *name, test_np_case_fn fn)
{
    test_answers answers = {0, 0, 0, 0, 0};
    uint32_t failed = 0;
    int i;

    test_group_begin(name);
    for (i = 0; i < TEST_SPEEDS; i++) {
        test_speed sp = test_speed_get(i);
        test_np_case nc = {&sp, 0, 0, 0, 0, NULL};

        for (nc.s = 0; nc.s < test_np_info->num_subslot; nc.s++) {
            for (nc.n = 0; nc.n < test_np_info->num_complex; nc.n++) {
                nc.entry = sp.phys_map[sp.port_cage * test_np_info->cage_per_complex * nc.n];
                failed += fn(&nc, &answers);
            }
        }
    }
    return test_group_end(name, failed);
}

/* A group with one case per speed, subslot, NP, cage of the NP and port of
 * the cage; the NP-local port asked about is the expected entry's. */
static uint32_t test_np_port_group(const char *name, test_np_case_fn fn)
{
    test_answers answers = {0, 0, 0, 0, 0};
    uint32_t failed = 0;
    uint32_t p;
    int i;

    test_group_begin(name);
    for (i = 0; i < TEST_SPEEDS; i++) {
        test_speed sp = test_speed_get(i);
        test_np_case nc = {&sp, 0, 0, 0, 0, NULL};

        for (nc.s = 0; nc.s < test_np_info->num_subslot; nc.s++) {
            for (nc.n = 0; nc.n < test_np_info->num_complex; nc.n++) {
                for (nc.k = 0; nc.k < test_np_info->cage_per_complex; nc.k++) {
                    for (p = 0; p < sp.port_cage; p++) {
                        uint32_t cage = test_np_info->cage_per_complex * nc.n + nc.k;

                        nc.entry = sp.phys_map[cage * sp.port_cage + p];
                        nc.q = nc.entry->np_port;
                        failed += fn(&nc, &answers);
                    }
                }
            }
        }
    }
    return test_group_end(name, failed);
}

/* Every NP is expected to have cage_per_complex cages' worth of ports. */
static uint32_t test_case_num_local_ports(const test_np_case *nc, test_answers *a)
{
    uint32_t expected = test_np_info->cage_per_complex * nc->speed->port_cage;
    uint32_t got = aux_cvn_np_info_num_local_ports(nc->s, nc->n, nc->speed->ifsub_type);

    (void)a;
    if (got != expected) {
        printf("  %s np %d num of ports %d != %d ERROR.\n", nc->speed->word, nc->n, got, expected);
        return 1;
    }
    printf("  %s np %d num of ports %d = %d ok.\n", nc->speed->word, nc->n, got, got);
    return 0;
}

static uint32_t test_case_np_to_front(const test_np_case *nc, test_answers *a)
{
    const port_mapping_entry *e = nc->entry;

    aux_cvn_np_info_to_mapping_info(nc->n, nc->q, nc->speed->ifsub_type, &a->front, NULL, NULL);
    if (a->front != e->phys_front_port) {
        printf("  %s np, cage, port (%d, %d, %d) front port %d != %d ERROR.\n", nc->speed->word,
               nc->n, nc->k, nc->q, a->front, e->phys_front_port);
        return 1;
    }
    printf("  %s np, cage, port (%d, %d, %d) front port %d = %d ok.\n", nc->speed->word, nc->n,
           nc->k, nc->q, e->phys_front_port, e->phys_front_port);
    return 0;
}

static uint32_t test_case_np_to_fplate(const test_np_case *nc, test_answers *a)
{
    const port_mapping_entry *e = nc->entry;

    aux_cvn_np_info_to_mapping_info(nc->n, nc->q, nc->speed->ifsub_type, NULL, &a->fplate_port,
                                    &a->port_type);
    if (a->fplate_port != e->fplate_port || a->port_type != e->port_type) {
        printf("  %s np, cage, port (%d, %d, %d) face_port, type (%d, %d) != (%d, %d) ERROR.\n",
               nc->speed->word, nc->n, nc->k, nc->q, a->fplate_port, a->port_type, e->fplate_port,
               e->port_type);
        return 1;
    }
    printf("  %s np, cage, port (%d, %d, %d) face_port, type (%d, %d) = (%d, %d) ok.\n",
           nc->speed->word, nc->n, nc->k, nc->q, e->fplate_port, e->port_type, e->fplate_port,
           e->port_type);
    return 0;
}

static uint32_t test_case_first_front(const test_np_case *nc, test_answers *a)
{
    const port_mapping_entry *e = nc->entry;

    (void)aux_cvn_np_first_port_on_np(nc->n, 0, nc->speed->ifsub_type, &a->front, NULL, NULL);
    if (a->front != e->phys_front_port) {
        printf("  %s np %d first front port 0x%x != 0x%x ERROR.\n", nc->speed->word, nc->n,
               a->front, e->phys_front_port);
        return 1;
    }
    printf("  %s np %d first front port 0x%x = 0x%x ok.\n", nc->speed->word, nc->n,
           e->phys_front_port, e->phys_front_port);
    return 0;
}

static uint32_t test_case_first_fplate(const test_np_case *nc, test_answers *a)
{
    const port_mapping_entry *e = nc->entry;

    (void)aux_cvn_np_first_port_on_np(nc->n, 0, nc->speed->ifsub_type, NULL, &a->fplate_port,
                                      &a->port_type);
    if (a->fplate_port != e->fplate_port || a->port_type != e->port_type) {
        printf("  %s np %d first face port, type (%d, %d) != (%d, %d) ERROR.\n", nc->speed->word,
               nc->n, a->fplate_port, a->port_type, e->fplate_port, e->port_type);
        return 1;
    }
    printf("  %s np %d first face port, type (%d, %d) = (%d, %d) ok.\n", nc->speed->word, nc->n,
           e->fplate_port, e->port_type, e->fplate_port, e->port_type);
    return 0;
}

uint32_t test_cvn_np_info_num_local_ports(void)
{
    return test_np_group("test_cvn_np_info_num_local_ports", test_case_num_local_ports);
}

uint32_t test_cvn_np_info_to_front_port(void)
{
    return test_np_port_group("test_cvn_np_info_to_front_port", test_case_np_to_front);
}

uint32_t test_cvn_np_info_to_fplate_porttype(void)
{
    return test_np_port_group("test_cvn_np_info_to_fplate_porttype", test_case_np_to_fplate);
}

uint32_t test_cvn_np_first_front_port_on_np(void)
{
    return test_np_group("test_cvn_np_first_front_port_on_np", test_case_first_front);
}

uint32_t test_cvn_np_first_fplate_porttype_on_np(void)
{
    return test_np_group("test_cvn_np_first_fplate_porttype_on_np", test_case_first_fplate);
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

        if (got != 0) {
            printf("  np %d subslot %d != 0 ERROR.\n", n, got);
            failed++;
        } else {
            printf("  np %d subslot %d = 0 ok.\n", n, 0);
        }
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

        if (ingress != expected) {
            printf("  ingress np complex %d np %d != %d ERROR.\n", c, ingress, expected);
            failed++;
        } else {
            printf("  ingress np complex %d np %d = %d ok.\n", c, ingress, expected);
        }

        egress = cvn_np_complex_to_np((uint8_t)c, 0);
        expected = (per == 1) ? c : c * per + 1;
        if (egress != expected) {
            printf("  egress np complex %d np %d != %d ERROR.\n", c, egress, expected);
            failed++;
        } else {
            printf("  egress np complex %d np %d = %d ok.\n", c, egress, egress);
        }
    }
    return test_group_end(name, failed);
}

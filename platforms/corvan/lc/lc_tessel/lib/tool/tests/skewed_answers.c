/*
 * skewed_answers.c - a deliberately wrong library for the self-test's own
 * tests.  Linked with -Wl,--wrap=<function> for each function below, it
 * lets the real library answer and then falsifies one known case per
 * function, so that the self-test prints the ERROR form of every group at
 * a place the tests can name.
 *
 * Skewed cases (the same on the fenna and the brisca card):
 *   aux_cvn_np_port_info_get (0, 2, 40GE)              -> list {3, 3}
 *   aux_cvn_np_front_port_to_mapping_info (1, 0x10, 100GE)  every output + 1
 *   aux_cvn_np_info_num_local_ports (0, 2, 10GE)       -> + 1
 *   aux_cvn_np_info_to_mapping_info (1, 97, 40GE)      every output + 1
 *   aux_cvn_np_first_port_on_np (2, 0, 10GE)           every output + 1
 *   aux_cvn_faceplate_to_mapping_info (5, 0x51, 40GE)  every output + 1
 *   cvn_np_complex_to_subslot (1)                      -> 1
 *   cvn_np_complex_to_np (2, 1) -> + 1, (2, 0) -> + 2
 * and, in the card summary: cvn_np_how_many + 1 on fenna cards,
 * cvn_np_chip_how_many + 1 on brisca cards, cvn_np_version_get NULL on
 * fenna cards and 5.d on brisca cards.
 */
#include <stddef.h>
#include <stdint.h>

#include "cvn_np_lib.h"

const port_info *__real_aux_cvn_np_port_info_get(uint32_t, uint32_t, uint32_t);
void __real_aux_cvn_np_front_port_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *, uint32_t *);
uint32_t __real_aux_cvn_np_info_num_local_ports(uint32_t, uint32_t, uint32_t);
void __real_aux_cvn_np_info_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *);
uint32_t __real_aux_cvn_np_first_port_on_np(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *);
uint32_t __real_aux_cvn_faceplate_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *);
uint32_t __real_cvn_np_complex_to_subslot(uint8_t);
uint32_t __real_cvn_np_complex_to_np(uint8_t, uint32_t);
uint32_t __real_cvn_np_how_many(void);
uint32_t __real_cvn_np_chip_how_many(void);
const card_version *__real_cvn_np_version_get(void);

const port_info *__wrap_aux_cvn_np_port_info_get(uint32_t, uint32_t, uint32_t);
void __wrap_aux_cvn_np_front_port_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *, uint32_t *);
uint32_t __wrap_aux_cvn_np_info_num_local_ports(uint32_t, uint32_t, uint32_t);
void __wrap_aux_cvn_np_info_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *);
uint32_t __wrap_aux_cvn_np_first_port_on_np(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *);
uint32_t __wrap_aux_cvn_faceplate_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *);
uint32_t __wrap_cvn_np_complex_to_subslot(uint8_t);
uint32_t __wrap_cvn_np_complex_to_np(uint8_t, uint32_t);
uint32_t __wrap_cvn_np_how_many(void);
uint32_t __wrap_cvn_np_chip_how_many(void);
const card_version *__wrap_cvn_np_version_get(void);

static int skewed_fenna(void) { return cardtype >= 0x3D0267u && cardtype <= 0x3D026Cu; }

static void skew(uint32_t *out)
{
    if (out != NULL) {
        *out += 1;
    }
}

const port_info *__wrap_aux_cvn_np_port_info_get(uint32_t subslot, uint32_t ifsubsys, uint32_t type)
{
    static const port_info three_of_40g[2] = {{3, 3}, {0, 8}};

    if (subslot == 0 && ifsubsys == 2 && type == CVN_NP_IFSUB_TYPE_40GE) {
        return three_of_40g;
    }
    return __real_aux_cvn_np_port_info_get(subslot, ifsubsys, type);
}

void __wrap_aux_cvn_np_front_port_to_mapping_info(uint32_t ifsubsys, uint32_t port, uint32_t type,
                                                  uint32_t *np, uint32_t *np_port,
                                                  uint32_t *fplate_port, uint32_t *port_type)
{
    __real_aux_cvn_np_front_port_to_mapping_info(ifsubsys, port, type, np, np_port, fplate_port,
                                                 port_type);
    if (ifsubsys == 1 && port == 0x10 && type == CVN_NP_IFSUB_TYPE_100GE) {
        skew(np);
        skew(np_port);
        skew(fplate_port);
        skew(port_type);
    }
}

uint32_t __wrap_aux_cvn_np_info_num_local_ports(uint32_t subslot, uint32_t np_num, uint32_t type)
{
    uint32_t n = __real_aux_cvn_np_info_num_local_ports(subslot, np_num, type);

    return (np_num == 2 && type == CVN_NP_IFSUB_TYPE_10GE) ? n + 1 : n;
}

void __wrap_aux_cvn_np_info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t type,
                                            uint32_t *front, uint32_t *fplate_port,
                                            uint32_t *port_type)
{
    __real_aux_cvn_np_info_to_mapping_info(np_num, np_port, type, front, fplate_port, port_type);
    if (np_num == 1 && np_port == 97 && type == CVN_NP_IFSUB_TYPE_40GE) {
        skew(front);
        skew(fplate_port);
        skew(port_type);
    }
}

uint32_t __wrap_aux_cvn_np_first_port_on_np(uint32_t np_num, uint32_t ifsubsys, uint32_t type,
                                            uint32_t *front, uint32_t *fplate_port,
                                            uint32_t *port_type)
{
    uint32_t status =
        __real_aux_cvn_np_first_port_on_np(np_num, ifsubsys, type, front, fplate_port, port_type);

    if (np_num == 2 && type == CVN_NP_IFSUB_TYPE_10GE) {
        skew(front);
        skew(fplate_port);
        skew(port_type);
    }
    return status;
}

uint32_t __wrap_aux_cvn_faceplate_to_mapping_info(uint32_t ifsubsys, uint32_t port,
                                                  uint32_t port_type, uint32_t *np,
                                                  uint32_t *np_port, uint32_t *front)
{
    uint32_t status =
        __real_aux_cvn_faceplate_to_mapping_info(ifsubsys, port, port_type, np, np_port, front);

    if (ifsubsys == 5 && port == 0x51 && port_type == CVN_NP_PORT_TYPE_40GE) {
        skew(np);
        skew(np_port);
        skew(front);
    }
    return status;
}

uint32_t __wrap_cvn_np_complex_to_subslot(uint8_t np_complex)
{
    uint32_t subslot = __real_cvn_np_complex_to_subslot(np_complex);

    return np_complex == 1 ? 1 : subslot;
}

uint32_t __wrap_cvn_np_complex_to_np(uint8_t np_complex, uint32_t second)
{
    uint32_t np = __real_cvn_np_complex_to_np(np_complex, second);

    if (np_complex == 2) {
        np += second ? 1 : 2;
    }
    return np;
}

uint32_t __wrap_cvn_np_how_many(void)
{
    /* Only ever larger: the library's own NP bounds still hold. */
    return __real_cvn_np_how_many() + (skewed_fenna() ? 1 : 0);
}

uint32_t __wrap_cvn_np_chip_how_many(void)
{
    return __real_cvn_np_chip_how_many() + (skewed_fenna() ? 0 : 1);
}

const card_version *__wrap_cvn_np_version_get(void)
{
    static const card_version five_d = {5, 'd'};

    if (skewed_fenna()) {
        return NULL;
    }
    (void)__real_cvn_np_version_get();
    return &five_d;
}

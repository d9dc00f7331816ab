/*
 * A library that is wrong in one known case per call (linked with
 * -Wl,--wrap=<call>), so that every group of the self-test prints its ERROR
 * form.  The real answer is taken and every output of the skewed case gets
 * + 1; the card summary is skewed per card: fenna one NP too many and no
 * version, brisca one chip too many and version 5.d.
 */
#include <stddef.h>
#include <stdint.h>

#include "cvn_np_lib.h"

/* The first three arguments of the one case each call gets wrong. */
enum { PORT_INFO, FRONT, NUM_LOCAL, NP_INFO, FIRST, FACEPLATE, SUBSLOT, COMPLEX, N_SKEWS };
static const uint32_t skews[N_SKEWS][3] = {[PORT_INFO] = {0, 2, CVN_NP_IFSUB_TYPE_40GE},
                                           [FRONT] = {1, 0x10, CVN_NP_IFSUB_TYPE_100GE},
                                           [NUM_LOCAL] = {0, 2, CVN_NP_IFSUB_TYPE_10GE},
                                           [NP_INFO] = {1, 97, CVN_NP_IFSUB_TYPE_40GE},
                                           [FIRST] = {2, 0, CVN_NP_IFSUB_TYPE_10GE},
                                           [FACEPLATE] = {5, 0x51, CVN_NP_PORT_TYPE_40GE},
                                           [SUBSLOT] = {1, 0, 0} /* complex 1 in subslot 1 */,
                                           [COMPLEX] = {2, 0, 0} /* both NPs of 2 */};

static int hit(int which, uint32_t a, uint32_t b, uint32_t c)
{
    return a == skews[which][0] && b == skews[which][1] && c == skews[which][2];
}

static void bump(int skewed, uint32_t *a, uint32_t *b, uint32_t *c, uint32_t *d)
{
    uint32_t *outs[4] = {a, b, c, d};
    for (int i = 0; skewed && i < 4; ++i) {
        if (outs[i] != NULL) {
            *outs[i] += 1;
        }
    }
}

static int fenna(void) { return cardtype >= 0x3D0267u && cardtype <= 0x3D026Cu; }

#define REAL_AND_WRAP(ret, name, ...)                                                              \
    ret __real_##name(__VA_ARGS__);                                                                \
    ret __wrap_##name(__VA_ARGS__);                                                                \
    ret __wrap_##name(__VA_ARGS__)

REAL_AND_WRAP(const port_info *, aux_cvn_np_port_info_get, uint32_t s, uint32_t cage, uint32_t t)
{
    static const port_info three_of_40g[2] = {{3, CVN_NP_PORT_TYPE_40GE}, {0, 8}};
    return hit(PORT_INFO, s, cage, t) ? three_of_40g : __real_aux_cvn_np_port_info_get(s, cage, t);
}

REAL_AND_WRAP(void, aux_cvn_np_front_port_to_mapping_info, uint32_t cage, uint32_t port, uint32_t t,
              uint32_t *np, uint32_t *np_port, uint32_t *fplate, uint32_t *type)
{
    __real_aux_cvn_np_front_port_to_mapping_info(cage, port, t, np, np_port, fplate, type);
    bump(hit(FRONT, cage, port, t), np, np_port, fplate, type);
}

REAL_AND_WRAP(uint32_t, aux_cvn_np_info_num_local_ports, uint32_t s, uint32_t np, uint32_t t)
{
    return __real_aux_cvn_np_info_num_local_ports(s, np, t) + (uint32_t)hit(NUM_LOCAL, s, np, t);
}

REAL_AND_WRAP(void, aux_cvn_np_info_to_mapping_info, uint32_t np, uint32_t np_port, uint32_t t,
              uint32_t *front, uint32_t *fplate, uint32_t *type)
{
    __real_aux_cvn_np_info_to_mapping_info(np, np_port, t, front, fplate, type);
    bump(hit(NP_INFO, np, np_port, t), front, fplate, type, NULL);
}

REAL_AND_WRAP(uint32_t, aux_cvn_np_first_port_on_np, uint32_t np, uint32_t ifsubsys, uint32_t t,
              uint32_t *front, uint32_t *fplate, uint32_t *type)
{
    uint32_t status = __real_aux_cvn_np_first_port_on_np(np, ifsubsys, t, front, fplate, type);
    bump(hit(FIRST, np, ifsubsys, t), front, fplate, type, NULL);
    return status;
}

REAL_AND_WRAP(uint32_t, aux_cvn_faceplate_to_mapping_info, uint32_t cage, uint32_t port, uint32_t t,
              uint32_t *np, uint32_t *np_port, uint32_t *front)
{
    uint32_t status = __real_aux_cvn_faceplate_to_mapping_info(cage, port, t, np, np_port, front);
    bump(hit(FACEPLATE, cage, port, t), np, np_port, front, NULL);
    return status;
}

REAL_AND_WRAP(uint32_t, cvn_np_complex_to_subslot, uint8_t complex)
{
    return __real_cvn_np_complex_to_subslot(complex) + (uint32_t)hit(SUBSLOT, complex, 0, 0);
}

REAL_AND_WRAP(uint32_t, cvn_np_complex_to_np, uint8_t complex, uint32_t second)
{
    /* ingress (second 1) + 1, egress (second 0) + 2 */
    return __real_cvn_np_complex_to_np(complex, second) +
           (hit(COMPLEX, complex, 0, 0) ? 2u - (second != 0) : 0u);
}

REAL_AND_WRAP(uint32_t, cvn_np_how_many, void)
{
    return __real_cvn_np_how_many() + (uint32_t)fenna(); /* only ever larger: bounds still hold */
}

REAL_AND_WRAP(uint32_t, cvn_np_chip_how_many, void)
{
    return __real_cvn_np_chip_how_many() + (uint32_t)!fenna();
}

REAL_AND_WRAP(const card_version *, cvn_np_version_get, void)
{
    static const card_version five_d = {5, 'd'};
    const card_version *real = __real_cvn_np_version_get();
    return fenna() ? NULL : real != NULL ? &five_d : NULL;
}

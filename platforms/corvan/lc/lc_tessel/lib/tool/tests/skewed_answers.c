/* A library wrong in one known case per call (linked with -Wl,--wrap=<call>):
 * every output of that case gets + 1, so every self-test group prints its
 * ERROR form.  Card summary: fenna one NP more and no version, brisca one chip
 * more and version 5.d. */
#include <stddef.h>
#include <stdint.h>
#include "cvn_np_lib.h"
typedef uint32_t u32;
/* The first three arguments of the one case each call gets wrong, in order:
 * port info (subslot 0, cage 2, 40GE), front port (cage 1, 0x10, 100GE), NP
 * count (subslot 0, NP 2, 10GE), NP port (NP 1, port 97, 40GE), first port
 * (NP 2, 0, 10GE), faceplate (cage 5, 0x51, 40GE), complex 1's subslot,
 * complex 2's NPs. */
enum { PORT_INFO, FRONT, NUM_LOCAL, NP_INFO, FIRST, FACEPLATE, SUBSLOT, COMPLEX };
static const u32 skews[][3] = {{0, 2, 0x10001},  {1, 0x10, 0x10000}, {0, 2, 0x10002},
                               {1, 97, 0x10001}, {2, 0, 0x10002},    {5, 0x51, 3},
                               {1, 0, 0},        {2, 0, 0}};

static int hit(int i, u32 a, u32 b, u32 c)
{
    return a == skews[i][0] && b == skews[i][1] && c == skews[i][2];
}

static void bump(int skewed, u32 *a, u32 *b, u32 *c, u32 *d)
{
    u32 *outs[4] = {a, b, c, d};
    for (int i = 0; i < 4; ++i)
        if (skewed && outs[i] != NULL)
            *outs[i] += 1;
}
static u32 fenna(void) { return cardtype >= 0x3D0267u && cardtype <= 0x3D026Cu; }

#define WRAP(ret, name, ...)                                                                       \
    ret __real_##name(__VA_ARGS__);                                                                \
    ret __wrap_##name(__VA_ARGS__);                                                                \
    ret __wrap_##name(__VA_ARGS__)

WRAP(const port_info *, aux_cvn_np_port_info_get, u32 s, u32 cage, u32 t)
{
    static const port_info three_of_40g[2] = {{3, CVN_NP_PORT_TYPE_40GE}, {0, 8}};
    return hit(PORT_INFO, s, cage, t) ? three_of_40g : __real_aux_cvn_np_port_info_get(s, cage, t);
}
WRAP(void, aux_cvn_np_front_port_to_mapping_info, u32 cg, u32 pt, u32 t, u32 *a, u32 *b, u32 *c,
     u32 *d)
{
    __real_aux_cvn_np_front_port_to_mapping_info(cg, pt, t, a, b, c, d);
    bump(hit(FRONT, cg, pt, t), a, b, c, d);
}
WRAP(u32, aux_cvn_np_info_num_local_ports, u32 s, u32 np, u32 t)
{
    return __real_aux_cvn_np_info_num_local_ports(s, np, t) + (u32)hit(NUM_LOCAL, s, np, t);
}
WRAP(void, aux_cvn_np_info_to_mapping_info, u32 np, u32 pt, u32 t, u32 *a, u32 *b, u32 *c)
{
    __real_aux_cvn_np_info_to_mapping_info(np, pt, t, a, b, c);
    bump(hit(NP_INFO, np, pt, t), a, b, c, NULL);
}
WRAP(u32, aux_cvn_np_first_port_on_np, u32 np, u32 sub, u32 t, u32 *a, u32 *b, u32 *c)
{
    u32 status = __real_aux_cvn_np_first_port_on_np(np, sub, t, a, b, c);
    bump(hit(FIRST, np, sub, t), a, b, c, NULL);
    return status;
}
WRAP(u32, aux_cvn_faceplate_to_mapping_info, u32 cg, u32 pt, u32 t, u32 *a, u32 *b, u32 *c)
{
    u32 status = __real_aux_cvn_faceplate_to_mapping_info(cg, pt, t, a, b, c);
    bump(hit(FACEPLATE, cg, pt, t), a, b, c, NULL);
    return status;
}
WRAP(u32, cvn_np_complex_to_subslot, uint8_t cx)
{
    return __real_cvn_np_complex_to_subslot(cx) + (u32)hit(SUBSLOT, cx, 0, 0);
}
WRAP(u32, cvn_np_complex_to_np, uint8_t cx, u32 second)
{
    return __real_cvn_np_complex_to_np(cx, second) + (hit(COMPLEX, cx, 0, 0) ? 2u - !!second : 0);
}
WRAP(u32, cvn_np_how_many, void) { return __real_cvn_np_how_many() + fenna(); } /* NP bounds hold */
WRAP(u32, cvn_np_chip_how_many, void) { return __real_cvn_np_chip_how_many() + !fenna(); }
WRAP(const card_version *, cvn_np_version_get, void)
{
    static const card_version five_d = {5, 'd'};
    return __real_cvn_np_version_get() == NULL || fenna() ? NULL : &five_d;
}

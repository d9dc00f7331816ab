/* A C99 program using the library as line-card C code does: the public
 * header, the exported tables and the platform substitute, nothing else.
 * It scripts a brisca card with a 10GE module in cage 0 and a 100GE module
 * in cage 3, lets the first call initialise lazily, and checks a few
 * answers.  Exit status 0 when all agree. */
#include <stdio.h>

#include "cvn_np_lib.h"
#include "cvn_np_lib_tables.h"
#include "cvn_np_sim.h"

static int failures;

static void expect(const char *what, uint32_t got, uint32_t want)
{
    if (got != want) {
        printf("c99 consumer: %s is 0x%x, want 0x%x\n", what, (unsigned)got, (unsigned)want);
        failures++;
    }
}

int main(void)
{
    uint32_t np = 0, np_port = 0, fplate = 0, type = 0;

    cvn_np_sim_reset();
    cvn_np_sim_set_card_type(0x3D0274u);
    cvn_np_sim_set_ifsubsys(0, 0, CVN_NP_IFSUB_TYPE_10GE);
    cvn_np_sim_set_ifsubsys(0, 3, CVN_NP_IFSUB_TYPE_100GE);

    expect("NP of front port 0x05", cvn_np_front_port_to_np(0x05), 0);
    expect("card type read lazily", cardtype, 0x3D0274u);
    expect("operation table", card_np_api == &cvn_np_api_brisca, 1);
    expect("mapping status", cvn_np_front_port_mapping_info(0x30, &np, &np_port, &fplate, &type),
           0);
    expect("NP of 0x30", np, 1);
    expect("NP port of 0x30", np_port, 116);
    expect("faceplate port of 0x30", fplate, 0x30);
    expect("port type of 0x30", type, CVN_NP_PORT_TYPE_100GE);
    expect("complex 0x102 narrowed to 2", cvn_np_complex_to_subslot((uint8_t)0x102), 0);
    expect("brisca 10GE entry 79 NP port", cvn_np_port_mapping_brisca_10g[79].np_port, 201);

    printf("c99 consumer: %s\n", failures == 0 ? "all answers as expected" : "FAILED");
    return failures == 0 ? 0 : 1;
}

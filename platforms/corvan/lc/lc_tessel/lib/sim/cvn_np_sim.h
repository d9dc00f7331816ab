/*
 * cvn_np_sim.h - the platform substitute: platform_get_my_card_type and
 * rva_ifsubsys_get_info for machines without the card's platform library.
 *
 * Both answer from a card type and a table of (subslot, ifsubsys) ->
 * interface-subsystem type, which the first call of anything here reads
 * from the environment and the functions below script on top:
 *
 *   CVN_NP_SIM_CARD_TYPE  the card type; unset or empty leaves it as it is
 *                         (CVN_NP_SIM_DEFAULT_CARD_TYPE unless scripted).
 *   CVN_NP_SIM_IFSUBSYS   a comma-separated list of SUBSLOT:IFSUBSYS=TYPE,
 *                         e.g. "0:3=0x10002,1:any=574,1:0=0x10000"; IFSUBSYS
 *                         may be "any" (CVN_NP_SIM_ANY, the subslot level).
 *
 * Numbers are C integer literals as strtoul(..., 0) reads them (0x.. hex,
 * 0.. octal, decimal) within 32 bits, without sign or whitespace; spaces
 * and tabs may surround an item of the list.  An empty item (",," or a
 * trailing comma) is malformed; of two items with the same key the later
 * counts.  A list is added whole, or not at all when an item is malformed
 * or its key finds no room.  A malformed value prints one line on stderr
 * naming the variable and the offending item and exits with status 2.
 *
 * A key not in the table answers status 0 with type CVN_NP_IFSUB_TYPE_NONE
 * (nothing installed); a NULL id or info answers status 22.  Queries are
 * safe from many threads at once; scripting is not meant to race with them.
 */
#ifndef CVN_NP_SIM_H
#define CVN_NP_SIM_H

#include "cvn_np_platform.h"

#ifdef __cplusplus
extern "C" {
#endif

#define CVN_NP_SIM_DEFAULT_CARD_TYPE 0x3D0274u
#define CVN_NP_SIM_ANY CVN_NP_IFSUB_ANY /* ifsubsys key of the subslot level */
#define CVN_NP_SIM_MAX_ENTRIES 64       /* scripted (subslot, ifsubsys) keys */

/* Forget every scripted answer and failure, set the card type back to the
 * default and zero the query counters.  The environment is not read again. */
void cvn_np_sim_reset(void);

/* Read both variables now (again). */
void cvn_np_sim_load_environment(void);

void cvn_np_sim_set_card_type(uint32_t card_type);

/* Answer the query for (subslot, ifsubsys) with status 0 and `type`, or
 * fail it with `status` (not 0), in place of the key's earlier answer.
 * Return 0, or -1 when the table is full or status is 0. */
int cvn_np_sim_set_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t type);
int cvn_np_sim_fail_ifsubsys(uint32_t subslot, uint32_t ifsubsys, uint32_t status);

/* Make every query fail with `status` (0 turns this off again). */
void cvn_np_sim_fail_all(uint32_t status);

/* Add a CVN_NP_SIM_IFSUBSYS-style list.  Return 0, or -1 and, when `error`
 * is non-NULL, a one-line description of the item at fault in it (cut to
 * error_size bytes with the terminating NUL). */
int cvn_np_sim_load_ifsubsys(const char *list, char *error, unsigned error_size);

/* How often each platform call has been made since the last reset. */
uint32_t cvn_np_sim_card_type_queries(void);
uint32_t cvn_np_sim_ifsubsys_queries(void);

#ifdef __cplusplus
}
#endif

#endif /* CVN_NP_SIM_H */

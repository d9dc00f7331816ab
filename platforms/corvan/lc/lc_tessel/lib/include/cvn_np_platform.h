/*
 * cvn_np_platform.h - the two platform calls the port-mapping library needs.
 *
 * On the card they come from the platform's closed library; everywhere else
 * the platform substitute (sim/) provides them.  libcvn_np_lib.a defines
 * neither, so whichever of the two is linked answers.
 */
#ifndef CVN_NP_PLATFORM_H
#define CVN_NP_PLATFORM_H

#include <stdint.h>

#include "cvn_np_lib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The running card's 32-bit card type.  Has no error result. */
uint32_t platform_get_my_card_type(void);

/* What is plugged in at id->subslot / id->ifsubsys (a cage, an EP instance,
 * or CVN_NP_IFSUB_ANY for the subslot level).  Returns 0 and fills info
 * (info->type is CVN_NP_IFSUB_TYPE_NONE when nothing is there), or a
 * non-zero status, in which case info is not to be read. */
uint32_t rva_ifsubsys_get_info(const ifsubsys_id *id, ifsubsys_info *info);

#ifdef __cplusplus
}
#endif

#endif /* CVN_NP_PLATFORM_H */

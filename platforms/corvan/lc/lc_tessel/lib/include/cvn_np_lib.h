/*
 * cvn_np_lib.h - NP port-mapping library of the corvan tessel line cards.
 *
 * Translates between the ports on a card's front panel (front ports and
 * faceplate ports, with their port type) and the network processors (NPs)
 * that serve them (NP id and NP-local port), for every card family the
 * library knows.  The card family is chosen once from the 32-bit card type,
 * either explicitly with cvn_np_lib_init() or, on the first call of any
 * other public function, from the type the platform reports.
 *
 * Conventions shared by every function below:
 *   - Results are 0 on success, CVN_NP_ERR_INVALID for a soft rejection, or
 *     the non-zero status of the platform's interface-subsystem query passed
 *     back unchanged.  aux_cvn_np_front_port_to_ifsubinst() alone answers 22.
 *   - Outputs are written only through non-NULL pointers, unless a function
 *     says it requires the pointer.
 *   - A broken precondition is not reported by code: the library prints
 *     "<source path>: <line> <condition> -- assertion failed" on stderr and
 *     aborts.  The preconditions are the families' own; see each function.
 *   - Every returned pointer points into static data owned by the library;
 *     never free or write through it.
 *   - Nothing allocates.  Initialise before calling from several threads;
 *     afterwards calls only read tables and ask the platform.
 *
 * Answers that the families leave open and that this library defines:
 *   - A slot that the selected family leaves empty answers CVN_NP_ERR_INVALID
 *     (a NULL pointer for the functions returning a list or record, nothing
 *     for the functions without a result).
 *   - maruta and quellon cards: see "maruta and quellon cards" below.
 *   - cage cards (brisca, brisca_4p, fenna, dornik): see "cage cards" below.
 *   - tolvar cards (see "tolvar cards" below): a port that names no entry of
 *     its EP, and a type whose bay has no row, map to nothing instead of
 *     reading past a table.
 *
 * The header compiles as C99 and as C++; every symbol has C linkage.
 */
#ifndef CVN_NP_LIB_H
#define CVN_NP_LIB_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Result codes ------------------------------------------------------ */

#define CVN_NP_ERR_INVALID 0x463B0216u /* soft rejection (1178272278) */
#define CVN_NP_EINVAL 22u              /* aux_cvn_np_front_port_to_ifsubinst only */

/* A faceplate-index table's value for "no port of this speed here". */
#define CVN_NP_NO_PORT 255

/* ---- Port-type codes (port_info lists, mapping entries, faceplate calls) */

#define CVN_NP_PORT_TYPE_NONE 0u
#define CVN_NP_PORT_TYPE_10GE 1u
#define CVN_NP_PORT_TYPE_COMBO 2u /* a cage as a whole; count = cages */
#define CVN_NP_PORT_TYPE_40GE 3u
#define CVN_NP_PORT_TYPE_100GE 4u
#define CVN_NP_PORT_TYPE_END 8u /* closes a port_info list */

/* ---- Interface-subsystem type codes (what the platform reports) -------- */

#define CVN_NP_IFSUB_TYPE_100GE 0x10000u
#define CVN_NP_IFSUB_TYPE_40GE 0x10001u
#define CVN_NP_IFSUB_TYPE_10GE 0x10002u
#define CVN_NP_IFSUB_TYPE_40GE_ALT 0x10003u /* 40GE tables, own per-cage count */
#define CVN_NP_IFSUB_TYPE_QUELLON_10GE 0x10021u
#define CVN_NP_IFSUB_TYPE_DORNIK_100GE 0x10030u
#define CVN_NP_IFSUB_TYPE_MARUTA_100GE 0x10040u
#define CVN_NP_IFSUB_TYPE_MARUTA_10GE 0x10041u
#define CVN_NP_IFSUB_TYPE_NONE 0xFFFFFFFFu /* empty, or the query failed */

/* The ifsubsys value that asks the platform for a subslot-level type. */
#define CVN_NP_IFSUB_ANY 0xFFFFFFFFu

/* Interface subsystems (EPs) of the tolvar cards, as the platform reports
 * them for a subslot (asked with CVN_NP_IFSUB_ANY).  A split subslot holds
 * two instances, each reporting one of CVN_NP_IFSUB_TYPE_100GE .. _40GE_ALT
 * when asked by instance number; a plain subslot reports one EP. */
#define CVN_NP_IFSUB_TYPE_TV_20X_NONE 565u /* 20 ports of port type NONE */
#define CVN_NP_IFSUB_TYPE_TV_2X10GE 566u
#define CVN_NP_IFSUB_TYPE_TV_4X10GE 567u
#define CVN_NP_IFSUB_TYPE_TV_8X10GE 568u
#define CVN_NP_IFSUB_TYPE_TV_2X40GE 570u
#define CVN_NP_IFSUB_TYPE_TV_1X40GE 571u
#define CVN_NP_IFSUB_TYPE_TV_16X10GE 573u
#define CVN_NP_IFSUB_TYPE_TV_SPLIT 574u     /* two instances */
#define CVN_NP_IFSUB_TYPE_TV_SPLIT_ONE 575u /* split encoding; NP ports find instance 0 only */
#define CVN_NP_IFSUB_TYPE_TV_20X10GE 576u
#define CVN_NP_IFSUB_TYPE_TV_SPLIT_B 577u   /* two instances */
#define CVN_NP_IFSUB_TYPE_TV_20X10GE_B 578u /* the ports of 576 */

/* Number of operations in a family's operation table. */
#define CVN_NP_API_SLOTS 46

/* ---- Records ----------------------------------------------------------- */

/* A family's NP summary; one read-only record per family. */
typedef struct np_info {
    uint16_t sw_version;
    uint16_t sw_status;
    uint16_t num_np;      /* NP chips (cvn_np_chip_how_many) */
    uint16_t num_complex; /* bound of every NP id (cvn_np_how_many) */
    uint16_t np_per_complex;
    uint16_t num_cage; /* bound of every cage / ifsubsys / ifsubinst */
    uint16_t cage_per_complex;
    uint16_t ver_major;
    uint16_t ver_minor; /* a character code: 99 is 'c' */
    uint16_t max_mtu;
    uint16_t max_fpport_100g;
    uint16_t max_fpport_40g;
    uint16_t max_fpport_10g;
    uint16_t num_subslot;
    uint16_t max_port_cage;
    uint16_t port_subslot_100g; /* bound of a 100GE faceplate index */
    uint16_t port_subslot_40g;  /* bound of a 40GE faceplate index */
    uint16_t port_subslot_10g;  /* bound of a 10GE faceplate index */
    uint16_t port_cage_100g;
    uint16_t port_cage_40g;
    uint16_t port_cage_40g_alt; /* ports per cage of CVN_NP_IFSUB_TYPE_40GE_ALT */
    uint16_t port_cage_10g;
    uint16_t num_info_types;
} np_info;

typedef struct card_version {
    uint16_t ver_major;
    uint16_t ver_minor;
} card_version;

typedef struct subslot_info {
    uint16_t num_of_subslots;
    uint16_t max_ports_per_subslot;
    uint16_t max_of_ifsubsys_per_subslot;
    uint16_t spare;
} subslot_info;

/* A port count; lists of them end with {0, CVN_NP_PORT_TYPE_END}. */
typedef struct port_info {
    uint32_t num_ports;
    uint32_t port_type;
} port_info;

/* One port of one speed.  Tables end with an entry whose fields are all
 * 0xFF (port_type 0x000000FF). */
typedef struct port_mapping_entry {
    uint16_t phys_front_port;
    uint16_t np;
    uint16_t np_port;
    uint16_t fplate_port;
    uint32_t port_type;
} port_mapping_entry;

/* Key of the platform's interface-subsystem query. */
typedef struct ifsubsys_id {
    uint32_t reserved; /* always 0 */
    uint32_t subslot;
    uint32_t ifsubsys; /* cage, EP instance, or CVN_NP_IFSUB_ANY */
} ifsubsys_id;

/* Answer of the platform's query; the library reads only `type`. */
typedef struct ifsubsys_info {
    uint32_t platform_word0;
    uint32_t type;
    uint32_t platform_word2;
    uint32_t platform_word3;
} ifsubsys_info;

/* One row of a tolvar EP data table: one interface-subsystem type and its
 * ports.  entries holds num_ports pointers in local-port order; first_entry
 * is entries[0].  port_info_list is one record {count, port_type} and the
 * end record.  np_port_span is read only for the 2-slice card's instance
 * types, where an instance's entries start at instance * np_port_span / 2. */
typedef struct cvn_np_ep_data {
    uint32_t ep_type;
    uint32_t np_per_subslot;
    uint32_t spare_a;
    uint32_t spare_b;
    uint32_t np_port_base;
    uint32_t np_port_span;
    uint32_t num_ports;
    uint32_t port_type;
    const port_mapping_entry *first_entry;
    const port_mapping_entry *const *entries;
    const port_info *port_info_list;
} cvn_np_ep_data;

/* ---- The operation table ------------------------------------------------
 * One per family, filled by the family's init; members are in slot order
 * and named after the public function of their slot.  NULL marks a slot
 * the family leaves empty.
 */
typedef struct cvn_np_api {
    const card_version *(*cvn_np_version_get)(void);                                    /* 0 */
    uint32_t (*cvn_max_mtu)(void);                                                      /* 1 */
    uint32_t (*cvn_np_how_many)(void);                                                  /* 2 */
    uint32_t (*cvn_np_chip_how_many)(void);                                             /* 3 */
    const port_info *(*cvn_np_port_info_get)(void);                                     /* 4 */
    const subslot_info *(*cvn_np_subslot_info_get)(void);                               /* 5 */
    const port_info *(*cvn_np_port_info_subslot)(uint16_t);                             /* 6 */
    const port_info *(*cvn_np_port_info_from_subslot_ifsubinst)(uint16_t, uint16_t);    /* 7 */
    uint32_t (*cvn_np_front_port_to_np)(uint32_t);                                      /* 8 */
    uint32_t (*cvn_np_front_port_to_np_port)(uint32_t);                                 /* 9 */
    uint32_t (*cvn_np_front_port_to_port_type)(uint32_t);                               /* 10 */
    uint32_t (*cvn_np_front_port_to_face_plate_port)(uint32_t, uint32_t *, uint32_t *); /* 11 */
    uint32_t (*cvn_np_front_port_mapping_info)(uint32_t, uint32_t *, uint32_t *, uint32_t *,
                                               uint32_t *);                                 /* 12 */
    uint32_t (*cvn_np_info_num_local_ports)(uint32_t);                                      /* 13 */
    uint32_t (*cvn_np_info_to_front_port)(uint32_t, uint32_t, uint32_t *);                  /* 14 */
    uint32_t (*cvn_np_info_to_fplate_porttype)(uint32_t, uint32_t, uint32_t *, uint32_t *); /* 15 */
    uint32_t (*cvn_np_first_front_port_on_np)(uint32_t, uint32_t *);                        /* 16 */
    uint32_t (*cvn_np_first_phys_port_on_np)(uint32_t, uint32_t *);                         /* 17 */
    uint32_t (*cvn_np_first_fplate_porttype_on_np)(uint32_t, uint32_t *, uint32_t *);       /* 18 */
    uint32_t (*cvn_faceplate_porttype_to_np)(uint32_t, uint32_t);                           /* 19 */
    uint32_t (*cvn_faceplate_porttype_to_np_port)(uint32_t, uint32_t);                      /* 20 */
    uint32_t (*cvn_faceplate_porttype_to_phys_port)(uint32_t, uint32_t);                    /* 21 */
    uint32_t (*cvn_faceplate_porttype_mapping_info)(uint32_t, uint32_t, uint32_t *, uint32_t *,
                                                    uint32_t *);                 /* 22 */
    uint32_t (*cvn_np_complex_to_subslot)(uint8_t);                              /* 23 */
    uint32_t (*cvn_np_complex_to_subslot_list)(uint8_t, uint32_t *, uint32_t *); /* 24 */
    uint32_t (*cvn_np_complex_to_np)(uint8_t, uint32_t);                         /* 25 */
    uint32_t (*cvn_np_set_if_subsys_type)(uint32_t, uint16_t);                   /* 26 */
    uint32_t (*cvn_np_subslot_to_np_list)(uint8_t, uint32_t *, uint32_t *);      /* 27 */
    uint32_t (*cvn_np_to_cpu_port_map)(uint16_t);                                /* 28 */
    uint32_t (*cvn_np_lib_set_subslot_phy_port)(uint16_t, uint32_t);             /* 29 */
    uint32_t (*cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port)(uint16_t, uint32_t,
                                                                uint32_t);                /* 30 */
    uint32_t (*cvn_np_lib_get_subslot)(uint32_t);                                         /* 31 */
    uint32_t (*cvn_np_lib_get_subslot_port)(uint32_t);                                    /* 32 */
    uint32_t (*cvn_np_lib_get_port)(uint32_t);                                            /* 33 */
    uint32_t (*cvn_np_lib_get_ifsubinst)(uint32_t);                                       /* 34 */
    uint32_t (*cvn_np_lib_get_ifsubinst_port)(uint32_t);                                  /* 35 */
    uint32_t (*cvn_np_lib_get_phys_port_tuple45)(uint32_t, uint16_t, uint16_t, uint16_t); /* 36 */
    uint32_t (*aux_cvn_np_front_port_to_ifsubsys)(uint32_t, uint32_t *, uint32_t *,
                                                  uint32_t *);                  /* 37 */
    const port_info *(*aux_cvn_np_port_info_get)(uint32_t, uint32_t, uint32_t); /* 38 */
    void (*aux_cvn_np_front_port_to_mapping_info)(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *, uint32_t *); /* 39 */
    uint32_t (*aux_cvn_np_info_num_local_ports)(uint32_t, uint32_t, uint32_t);         /* 40 */
    void (*aux_cvn_np_info_to_mapping_info)(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *); /* 41 */
    uint32_t (*aux_cvn_np_first_port_on_np)(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *); /* 42 */
    uint32_t (*aux_cvn_faceplate_to_mapping_info)(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *); /* 43 */
    void (*aux_np_port_to_mapping_info)(const port_mapping_entry *const *, uint32_t, uint32_t,
                                        uint32_t *, uint32_t *, uint32_t *); /* 44 */
    uint32_t (*aux_cvn_np_front_port_to_ifsubinst)(uint32_t, uint32_t *);    /* 45 */
} cvn_np_api;

/* ---- Global state (visible to programs that link the library) ---------- */

extern cvn_np_api *card_np_api; /* the selected family's table; NULL until init */
extern int32_t initialized;     /* 1 once cvn_np_lib_init has completed */
extern uint32_t cardtype;       /* card type read by the lazy init; set it
                                   yourself before an explicit init: the
                                   dornik and quellon families read it */

/* The operation tables of the families (writable, filled by their init). */
extern cvn_np_api cvn_np_api_brisca;
extern cvn_np_api cvn_np_api_brisca_4p;
extern cvn_np_api cvn_np_api_dornik;
extern cvn_np_api cvn_np_api_fenna;
extern cvn_np_api cvn_np_api_2slice_tolvar;
extern cvn_np_api cvn_np_api_1slice_tolvar;
extern cvn_np_api cvn_np_api_maruta;
extern cvn_np_api cvn_np_api_quellon;

/* ---- Initialisation ------------------------------------------------------ */

/* Selects the family of card_type and runs its init; returns 0.  An unknown
 * card type ends in the core's assertion "0".  May be called again at any
 * time: the library then serves the new family.  Does not write cardtype. */
uint32_t cvn_np_lib_init(uint32_t card_type);

/* The name of the family that serves card_type: "brisca", "brisca_4p",
 * "fenna", "dornik", "maruta", "quellon", "tolvar_2slice" or
 * "tolvar_1slice"; NULL for a card type the library does not serve (where
 * cvn_np_lib_init would assert).  Never asserts, initialises nothing and
 * does not ask the platform; the answer comes from the table that
 * cvn_np_lib_init dispatches on. */
const char *cvn_np_card_family(uint32_t card_type);

/* ---- Card summary (slots 0-7) --------------------------------------------
 * Every function below initialises the library from the platform's card
 * type on its first call if cvn_np_lib_init has not run.
 */

/* Slot 0: the family's library version. */
const card_version *cvn_np_version_get(void);
/* Slot 1: the largest MTU in bytes. */
uint32_t cvn_max_mtu(void);
/* Slot 2: the number of complexes, the bound of every NP id. */
uint32_t cvn_np_how_many(void);
/* Slot 3: the number of NP chips. */
uint32_t cvn_np_chip_how_many(void);
/* Slot 4: the card's port counts.  brisca and fenna: the list of the first
 * cage that holds a module, the dummy (empty) list when none does. */
const port_info *cvn_np_port_info_get(void);
/* Slot 5: the card's subslot summary. */
const subslot_info *cvn_np_subslot_info_get(void);
/* Slot 6: the subslot's cage list (COMBO).  Asserts subslot < num_subslot. */
const port_info *cvn_np_port_info_subslot(uint16_t subslot);
/* Slot 7: port counts of one cage by what the platform reports in it (the
 * dummy list for an empty cage or a failed query).  Asserts the subslot and
 * the cage against the card's bounds. */
const port_info *cvn_np_port_info_from_subslot_ifsubinst(uint16_t subslot, uint16_t ifsubinst);

/* ---- Front port to NP (slots 8-12) ---------------------------------------
 * The cage's module type is asked of the platform.  A front port whose cage
 * is empty (or whose query failed, for slots 8-10) ends in the assertion
 * "0"; a port the module does not have ends in the faceplate-index
 * assertion of its speed.
 */

/* Slot 8: the NP serving a front port. */
uint32_t cvn_np_front_port_to_np(uint32_t front);
/* Slot 9: the front port's NP-local port. */
uint32_t cvn_np_front_port_to_np_port(uint32_t front);
/* Slot 10: the front port's port type. */
uint32_t cvn_np_front_port_to_port_type(uint32_t front);
/* Slot 11: faceplate port and port type; a failed query's status is
 * returned.  Cage families: both outputs are required; a NULL one makes the
 * call answer CVN_NP_ERR_INVALID before anything is asked. */
uint32_t cvn_np_front_port_to_face_plate_port(uint32_t front, uint32_t *fplate_port,
                                              uint32_t *port_type);
/* Slot 12: all of a front port's mapping; a failed query's status is
 * returned. */
uint32_t cvn_np_front_port_mapping_info(uint32_t front, uint32_t *np, uint32_t *np_port,
                                        uint32_t *fplate_port, uint32_t *port_type);

/* ---- NP to front port (slots 13-18) -------------------------------------- */

/* Slot 13: NP-local ports in use on an NP (by what its cages hold).
 * Asserts np_id < cvn_np_how_many(). */
uint32_t cvn_np_info_num_local_ports(uint32_t np_id);
/* Slot 14: NP-local port to front port (through slot 15). */
uint32_t cvn_np_info_to_front_port(uint32_t np_id, uint32_t np_port, uint32_t *front);
/* Slot 15: NP-local port to faceplate port and port type, read from the
 * tables only.  CVN_NP_ERR_INVALID for an NP id out of range (fenna also
 * for np_port above 254); 0 with the outputs untouched when no port of the
 * NP matches. */
uint32_t cvn_np_info_to_fplate_porttype(uint32_t np_id, uint32_t np_port, uint32_t *fplate_port,
                                        uint32_t *port_type);
/* Slot 16: the first front port served by an NP, by the first of its cages
 * that holds a module; CVN_NP_ERR_INVALID when none does; a failed query's
 * status is returned.  Asserts the output and the NP id. */
uint32_t cvn_np_first_front_port_on_np(uint32_t np_id, uint32_t *front);
/* Slot 17: CVN_NP_ERR_INVALID on the cage families. */
uint32_t cvn_np_first_phys_port_on_np(uint32_t np_id, uint32_t *port);
/* Slot 18: as slot 16, giving the faceplate port and its port type.
 * Asserts both outputs and the NP id. */
uint32_t cvn_np_first_fplate_porttype_on_np(uint32_t np_id, uint32_t *port_type,
                                            uint32_t *fplate_port);

/* ---- Faceplate port to NP (slots 19-22) -----------------------------------
 * port_type is a port-type code (1, 3 or 4 on the cage families; another
 * code ends in the assertion "0"); the faceplate port must name a port of
 * that speed on an existing cage.
 */

/* Slot 19: the NP of a faceplate port. */
uint32_t cvn_faceplate_porttype_to_np(uint32_t port_type, uint32_t fplate_port);
/* Slot 20: its NP-local port. */
uint32_t cvn_faceplate_porttype_to_np_port(uint32_t port_type, uint32_t fplate_port);
/* Slot 21: its front port. */
uint32_t cvn_faceplate_porttype_to_phys_port(uint32_t port_type, uint32_t fplate_port);
/* Slot 22: all three; returns 0. */
uint32_t cvn_faceplate_porttype_mapping_info(uint32_t port_type, uint32_t fplate_port, uint32_t *np,
                                             uint32_t *np_port, uint32_t *front);

/* ---- Complexes and subslots (slots 23-28) -------------------------------- */

/* Slot 23: the subslot of a complex.  Asserts np_complex < cvn_np_how_many(). */
uint32_t cvn_np_complex_to_subslot(uint8_t np_complex);
/* Slot 24: a complex's subslots as count and first; 0 and nothing written
 * without a count pointer. */
uint32_t cvn_np_complex_to_subslot_list(uint8_t np_complex, uint32_t *count,
                                        uint32_t *first_subslot);
/* Slot 25: an NP of a complex; a non-zero `second` picks its second NP. */
uint32_t cvn_np_complex_to_np(uint8_t np_complex, uint32_t second);
/* Slot 26: sets the type of an interface subsystem (families without it
 * accept and ignore). */
uint32_t cvn_np_set_if_subsys_type(uint32_t ifsubsys, uint16_t type);
/* Slot 27: the NPs of a subslot as count and first; CVN_NP_ERR_INVALID for
 * a NULL output. */
uint32_t cvn_np_subslot_to_np_list(uint8_t subslot, uint32_t *count, uint32_t *first_np);
/* Slot 28: the NP port that leads to the host CPU. */
uint32_t cvn_np_to_cpu_port_map(uint16_t np_num);

/* ---- Front-port encoding (slots 29-36) ------------------------------------
 * Cage families: 8 bits, bits 7..4 the cage, bits 3..0 the port in the
 * cage; the subslot is not encoded.
 */

/* Slot 29: a front port from a physical port number. */
uint32_t cvn_np_lib_set_subslot_phy_port(uint16_t subslot, uint32_t phy_port);
/* Slot 30: a front port from cage and port. */
uint32_t cvn_np_lib_set_subslot_ifsubinst_ifsubinst_port(uint16_t subslot, uint32_t ifsubinst,
                                                         uint32_t ifsubinst_port);
/* Slot 31: the subslot of a front port. */
uint32_t cvn_np_lib_get_subslot(uint32_t front);
/* Slot 32: the port within the subslot. */
uint32_t cvn_np_lib_get_subslot_port(uint32_t front);
/* Slot 33: the port number that indexes the faceplate-index tables. */
uint32_t cvn_np_lib_get_port(uint32_t front);
/* Slot 34: the cage (ifsubinst) of a front port. */
uint32_t cvn_np_lib_get_ifsubinst(uint32_t front);
/* Slot 35: the port within the cage. */
uint32_t cvn_np_lib_get_ifsubinst_port(uint32_t front);
/* Slot 36: a front port from a port type and (subslot, cage, port); 255 for
 * a port type the family has no tables for. */
uint32_t cvn_np_lib_get_phys_port_tuple45(uint32_t port_type, uint16_t subslot, uint16_t ifsubinst,
                                          uint16_t ifsubinst_port);

/* ---- cage cards --------------------------------------------------------------
 * brisca (8 cages, 4 NPs), brisca_4p (4 cages, 4 NPs), fenna (6 cages,
 * 3 NPs) and dornik (100GE only: 12 cages on 6 NPs, or 4 on 2 for the lite
 * card 0x3D02C2) run one set of operations; the functions above describe
 * brisca.  The others differ in:
 *   - brisca_4p: cvn_np_port_info_get answers the cage list {4, COMBO}
 *     without asking the platform; slots 11, 12, 16 and 18 go on after a
 *     failed query as if the cage were empty (16 and 18 then answer 0 and
 *     write nothing); slot 45 accepts cages 0-3.
 *   - fenna: no 40GE_ALT modules (0x10003 is an unknown type);
 *     aux_cvn_np_info_num_local_ports counts an NP's two cages;
 *     cvn_np_info_to_fplate_porttype (and so cvn_np_info_to_front_port)
 *     rejects NP-local ports above 254; slot 45 is empty.
 *   - dornik: one module type, CVN_NP_IFSUB_TYPE_DORNIK_100GE, and port
 *     type 4 only; the size is chosen from cardtype at init (0x3D02C3 and
 *     0x3D02C6 full, any other lite); cvn_np_port_info_get answers the
 *     100GE list; slots 8-10 answer 0 on a failed query;
 *     aux_cvn_np_info_num_local_ports counts an NP's two cages; slot 45
 *     accepts cages 0-11 on both sizes.
 * Answers the library defines where the wiring gives none:
 *   - cvn_np_front_port_to_face_plate_port needs both outputs: a NULL one
 *     answers CVN_NP_ERR_INVALID before anything is asked.
 *   - aux_cvn_np_first_port_on_np with an NP number at or above the card's
 *     num_complex answers CVN_NP_ERR_INVALID and writes nothing.
 *   - aux_np_port_to_mapping_info passes over NULL pointers in the list and
 *     writes nothing for a NULL list.
 */

/* ---- tolvar cards -----------------------------------------------------------
 * Two subslots (bays), each holding an EP whose type the platform reports,
 * asked again on every call.  Front and faceplate ports are 8 bits: bits
 * 7..6 the subslot, then the port (bits 5..0) or, on a split subslot, the
 * instance (bits 5..4) and the instance port (bits 3..0).  The 2-slice
 * card has one NP per subslot (NP n serves subslot n); on the 1-slice card
 * NP 0 serves both bays, told apart by NP-local port ranges.
 *
 * Answers the library defines where an EP's wiring gives none:
 *   - A port that names no entry of its EP (an entry index at or past the
 *     row's num_ports, such as port 5 of a 1x40GE EP; on the 1-slice card
 *     also a split index of 255 or port bits 5..0 of 32 or more): slot 39
 *     writes nothing, so slots 8-10 answer 0, slot 11 gives 0 in both
 *     outputs and slot 12 returns 0 with its outputs untouched; slot 43
 *     returns CVN_NP_ERR_INVALID and writes nothing, so slots 19-21 answer
 *     CVN_NP_ERR_INVALID and slot 22 returns 0 with nothing written.
 *   - 2-slice, type 0x10003 in slots 38 and 39: served from its own row,
 *     which has the 40GE instance's ports ({2, 40GE}, the same mapping).
 *     On the 1-slice card slot 38 gives the empty list and slot 39 asserts
 *     "0" for it, as for any type it does not map.
 *   - 1-slice, a type without a row in the bay (573, 576, 578 in bay 1;
 *     0x10003 in both): slot 38 NULL; slot 40 0 (0x10003: its np_info
 *     count); slot 41 writes nothing; slots 39, 42 and 43 write nothing and
 *     slots 42 and 43 return CVN_NP_ERR_INVALID (slot 43 before it compares
 *     the port type).
 *   - 1-slice: cvn_np_complex_to_subslot_list writes both subslots, 0 and
 *     1, through first_subslot (pass an array of two), and
 *     cvn_np_first_phys_port_on_np takes a subslot, not an NP id, and gives
 *     that bay's first front port.
 */

/* ---- Auxiliary layer (slots 37-45) ---------------------------------------- */

/* Slot 37: asks the platform what the front port's cage holds.  Returns the
 * query's non-zero status with nothing written, else 0.  Asserts the cage
 * against num_cage. */
uint32_t aux_cvn_np_front_port_to_ifsubsys(uint32_t front, uint32_t *subslot, uint32_t *ifsubsys,
                                           uint32_t *ifsub_type);
/* Slot 38: port counts of a cage of a given type (the dummy list for a type
 * the family does not know).  Asserts subslot and cage. */
const port_info *aux_cvn_np_port_info_get(uint32_t subslot, uint32_t ifsubsys, uint32_t ifsub_type);
/* Slot 39: mapping of a front port of a known type.  Asserts the cage, the
 * type ("0") and the port's faceplate index at the type's speed. */
void aux_cvn_np_front_port_to_mapping_info(uint32_t ifsubsys, uint32_t port, uint32_t ifsub_type,
                                           uint32_t *np, uint32_t *np_port, uint32_t *fplate_port,
                                           uint32_t *port_type);
/* Slot 40: NP-local ports of a type (brisca: per cage; fenna: per NP).
 * Asserts subslot, NP and type. */
uint32_t aux_cvn_np_info_num_local_ports(uint32_t subslot, uint32_t np_num, uint32_t ifsub_type);
/* Slot 41: mapping of an NP-local port of a known type; nothing is written
 * when the NP has no such port.  Asserts the NP and the type. */
void aux_cvn_np_info_to_mapping_info(uint32_t np_num, uint32_t np_port, uint32_t ifsub_type,
                                     uint32_t *front, uint32_t *fplate_port, uint32_t *port_type);
/* Slot 42: the first mapping entry of an NP for a type; CVN_NP_ERR_INVALID
 * for a type the family does not know.  Cage families: an NP number at or
 * above num_complex also answers CVN_NP_ERR_INVALID, with nothing written. */
uint32_t aux_cvn_np_first_port_on_np(uint32_t np_num, uint32_t ifsubsys, uint32_t ifsub_type,
                                     uint32_t *front, uint32_t *fplate_port, uint32_t *port_type);
/* Slot 43: mapping of a faceplate port; returns 0.  Asserts the cage, the
 * port type ("0") and the faceplate index. */
uint32_t aux_cvn_faceplate_to_mapping_info(uint32_t ifsubsys, uint32_t port, uint32_t port_type,
                                           uint32_t *np, uint32_t *np_port, uint32_t *front);
/* Slot 44: searches count entries for an NP-local port; the first match is
 * written, nothing when none matches. */
void aux_np_port_to_mapping_info(const port_mapping_entry *const *entries, uint32_t np_port,
                                 uint32_t count, uint32_t *front, uint32_t *fplate_port,
                                 uint32_t *port_type);
/* Slot 45: decodes and checks the cage of a front port: 0, or 22 for a
 * NULL output or a cage beyond the card (the cage is still written).
 * fenna leaves the slot empty: CVN_NP_ERR_INVALID there. */
uint32_t aux_cvn_np_front_port_to_ifsubinst(uint32_t front, uint32_t *ifsubinst);

/* ---- maruta and quellon cards ----------------------------------------------
 * maruta (two NPs; instance 0/2 an NP's 100GE port, 1/3 its ten 10GE
 * ports; front port 16 * instance + port) answers from its tables without
 * asking the platform, except slots 7 and 37.  Its port_info answers are
 * single records, not lists closed by an END record.  Answers it defines:
 *   - Slots 19, 20 and 22 with a faceplate port past the port table (59 or
 *     more), slot 36 with ifsubinst + port past the tuple table (23 or
 *     more), slot 39 with an index past its instance's ports: the index
 *     reads as the table's all-0xFF end entry, so 19, 20 and 36 answer 255
 *     and 22 and 39 write 255 to every output given.  A front or faceplate
 *     port on a hole of the table (1-15, 26-31, 33-47) answers 255 as well.
 *   - Slots 16, 18 and 22 need their outputs; a NULL one is not written.
 *   - Slots 40, 42, 43, 44 are empty: CVN_NP_ERR_INVALID, or nothing.
 *
 * quellon (one or two NPs by the card type in cardtype, 24 ports each on
 * six 4-port instances; front port = faceplate port = the port's index)
 * answers these where its wiring gives none:
 *   - Slot 14 writes nothing through a NULL output.  Slots 15 and 18 write
 *     nothing, and ask nothing, when the NP has no such NP-local port.
 *   - Slots 11 and 12 ask the platform for the port type only when its
 *     output is given.
 *   - The bound of every port check, cvn_np_qln_max_ports, is taken as at
 *     most 48, the ports of the table, whatever is stored there.
 *   - Slots 37-45 are empty: CVN_NP_ERR_INVALID, NULL, or nothing.
 */

/* ---- Outside the operation table ------------------------------------------ */

/* Stores the low 8 bits of np_id in *np; 0 if they are below
 * cvn_np_how_many(), else CVN_NP_ERR_INVALID.  A NULL np answers
 * CVN_NP_ERR_INVALID and stores nothing. */
uint32_t cvn_np_id_validate(uint32_t np_id, uint8_t *np);
/* Always CVN_NP_ERR_INVALID. */
uint32_t cvn_np_unsupported(void);

#ifdef __cplusplus
}
#endif

#endif /* CVN_NP_LIB_H */

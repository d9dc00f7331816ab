/*
 * cvn_np_lib_tables.h - the families' tables and records, by name.
 *
 * Programs that check the library against its own wiring (the self-test)
 * read these directly.  Everything here is owned by the library: the tables
 * are read-only, the current-record pointers and run-time records are
 * written by the family's init and only read afterwards.
 */
#ifndef CVN_NP_LIB_TABLES_H
#define CVN_NP_LIB_TABLES_H

#include <stdint.h>

#include "cvn_np_lib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- brisca: eight cages, four NPs; cages 2n and 2n+1 belong to NP n ---- */

extern const np_info np_info_brisca;
extern const port_info port_info_brisca_10g[2];
extern const port_info port_info_brisca_40g[2];
extern const port_info port_info_brisca_100g[2];
extern const port_info brisca_dummy_port_info[1];
extern const port_info *const port_info_brisca[6];
extern const port_mapping_entry cvn_np_port_mapping_brisca_10g[81];
extern const port_mapping_entry cvn_np_port_mapping_brisca_40g[17];
extern const port_mapping_entry cvn_np_port_mapping_brisca_100g[9];
extern const port_mapping_entry *const np_local_port_map_brisca_10g[80];
extern const port_mapping_entry *const np_local_port_map_brisca_40g[16];
extern const port_mapping_entry *const np_local_port_map_brisca_100g[8];
extern const port_mapping_entry *const fplate_port_map_brisca_10g[80];
extern const port_mapping_entry *const fplate_port_map_brisca_40g[16];
extern const port_mapping_entry *const fplate_port_map_brisca_100g[8];
extern const port_mapping_entry *const phys_front_port_map_brisca_10g[80];
extern const port_mapping_entry *const phys_front_port_map_brisca_40g[16];
extern const port_mapping_entry *const phys_front_port_map_brisca_100g[8];
extern const int32_t brisca_phys_2_fplate_cage_10GE[128];
extern const int32_t brisca_phys_2_fplate_cage_40GE[128];
extern const int32_t brisca_phys_2_fplate_cage_100GE[128];

extern const np_info *brisca_card_np_info;
extern const port_info *const *brisca_card_port_info;
extern const port_mapping_entry *const *brisca_card_phys_map_100ge;
extern const port_mapping_entry *const *brisca_card_fplate_map_100ge;
extern const port_mapping_entry *const *brisca_card_np_port_map_100ge;
extern const port_mapping_entry *const *brisca_card_phys_map_40ge;
extern const port_mapping_entry *const *brisca_card_fplate_map_40ge;
extern const port_mapping_entry *const *brisca_card_np_port_map_40ge;
extern const port_mapping_entry *const *brisca_card_phys_map_10ge;
extern const port_mapping_entry *const *brisca_card_fplate_map_10ge;
extern const port_mapping_entry *const *brisca_card_np_port_map_10ge;
extern card_version brisca_card_version;
extern subslot_info brisca_card_subslot_info;

void cvn_np_brisca_init(void);
void cvn_np_brisca_api_fill(cvn_np_api *table);

/* ---- brisca_4p: four cages, four NPs; cage n belongs to NP n ------------- */

extern const np_info np_info_brisca_4p;
extern const port_info port_info_brisca_4p_10g[2];
extern const port_info port_info_brisca_4p_40g[2];
extern const port_info port_info_brisca_4p_100g[2];
extern const port_info port_info_brisca_4p_combo[2];
extern const port_info brisca_4p_dummy_port_info[1];
extern const port_info *const port_info_brisca_4p[6];
extern const port_mapping_entry cvn_np_port_mapping_brisca_4p_10g[41];
extern const port_mapping_entry cvn_np_port_mapping_brisca_4p_40g[9];
extern const port_mapping_entry cvn_np_port_mapping_brisca_4p_100g[5];
/* NP n's block starts at n * ports per cage; the rest is NULL. */
extern const port_mapping_entry *const np_local_port_map_brisca_4p_10g[80];
extern const port_mapping_entry *const np_local_port_map_brisca_4p_40g[16];
extern const port_mapping_entry *const np_local_port_map_brisca_4p_100g[16];
extern const port_mapping_entry *const fplate_port_map_brisca_4p_10g[40];
extern const port_mapping_entry *const fplate_port_map_brisca_4p_40g[8];
extern const port_mapping_entry *const fplate_port_map_brisca_4p_100g[4];
extern const port_mapping_entry *const phys_front_port_map_brisca_4p_10g[40];
extern const port_mapping_entry *const phys_front_port_map_brisca_4p_40g[8];
extern const port_mapping_entry *const phys_front_port_map_brisca_4p_100g[4];
extern const int32_t brisca_4p_phys_2_fplate_cage_10GE[64];
extern const int32_t brisca_4p_phys_2_fplate_cage_40GE[64];
extern const int32_t brisca_4p_phys_2_fplate_cage_100GE[64];

extern const np_info *brisca_4p_card_np_info;
extern const port_info *const *brisca_4p_card_port_info;
extern const port_mapping_entry *const *brisca_4p_card_phys_map_100ge;
extern const port_mapping_entry *const *brisca_4p_card_fplate_map_100ge;
extern const port_mapping_entry *const *brisca_4p_card_np_port_map_100ge;
extern const port_mapping_entry *const *brisca_4p_card_phys_map_40ge;
extern const port_mapping_entry *const *brisca_4p_card_fplate_map_40ge;
extern const port_mapping_entry *const *brisca_4p_card_np_port_map_40ge;
extern const port_mapping_entry *const *brisca_4p_card_phys_map_10ge;
extern const port_mapping_entry *const *brisca_4p_card_fplate_map_10ge;
extern const port_mapping_entry *const *brisca_4p_card_np_port_map_10ge;
extern card_version brisca_4p_card_version;
extern subslot_info brisca_4p_card_subslot_info;

void cvn_np_brisca_4p_init(void);
void cvn_np_brisca_4p_api_fill(cvn_np_api *table);

/* ---- dornik: 100GE cages, two per NP; full (12 cages) and lite (4) ------- */

extern const np_info np_info_dornik;
extern const np_info np_info_dornik_lite;
extern const port_info dornik_dummy_port_info[1];
extern const port_info *const port_info_dornik[6];
extern const port_info *const port_info_dornik_lite[6];
extern const port_mapping_entry cvn_np_port_mapping_dornik_100g[13];
extern const port_mapping_entry *const np_local_port_map_dornik_100g[12];
extern const port_mapping_entry *const fplate_port_map_dornik_100g[12];
extern const port_mapping_entry *const phys_front_port_map_dornik_100g[12];
extern const int32_t dornik_phys_2_fplate_ifsub_100GE[192];

extern const np_info *dornik_card_np_info; /* np_info_dornik or _lite, by cardtype */
extern const port_info *const *dornik_card_port_info;
extern const port_mapping_entry *const *dornik_card_phys_map_100ge;
extern const port_mapping_entry *const *dornik_card_fplate_map_100ge;
extern const port_mapping_entry *const *dornik_card_np_port_map_100ge;
extern card_version dornik_card_version;
extern subslot_info dornik_card_subslot_info;

void cvn_np_dornik_init(void);
void cvn_np_dornik_api_fill(cvn_np_api *table);

/* ---- fenna: six cages, three NPs; cages 2n and 2n+1 belong to NP n ------ */

extern const np_info np_info_fenna;
extern const port_info port_info_fenna_10g[2];
extern const port_info port_info_fenna_40g[2];
extern const port_info port_info_fenna_100g[2];
extern const port_info fenna_dummy_port_info[1];
extern const port_info *const port_info_fenna[6];
extern const port_mapping_entry cvn_np_port_mapping_fenna_10g[61];
extern const port_mapping_entry cvn_np_port_mapping_fenna_40g[13];
extern const port_mapping_entry cvn_np_port_mapping_fenna_100g[7];
extern const port_mapping_entry *const np_local_port_map_fenna_10g[60];
extern const port_mapping_entry *const np_local_port_map_fenna_40g[12];
extern const port_mapping_entry *const np_local_port_map_fenna_100g[6];
extern const port_mapping_entry *const fplate_port_map_fenna_10g[60];
extern const port_mapping_entry *const fplate_port_map_fenna_40g[12];
extern const port_mapping_entry *const fplate_port_map_fenna_100g[6];
extern const port_mapping_entry *const phys_front_port_map_fenna_10g[60];
extern const port_mapping_entry *const phys_front_port_map_fenna_40g[12];
extern const port_mapping_entry *const phys_front_port_map_fenna_100g[6];
extern const int32_t fenna_phys_2_fplate_cage_10GE[96];
extern const int32_t fenna_phys_2_fplate_cage_40GE[96];
extern const int32_t fenna_phys_2_fplate_cage_100GE[96];

extern const np_info *fenna_card_np_info;
extern const port_info *const *fenna_card_port_info;
extern const port_mapping_entry *const *fenna_card_phys_map_100ge;
extern const port_mapping_entry *const *fenna_card_fplate_map_100ge;
extern const port_mapping_entry *const *fenna_card_np_port_map_100ge;
extern const port_mapping_entry *const *fenna_card_phys_map_40ge;
extern const port_mapping_entry *const *fenna_card_fplate_map_40ge;
extern const port_mapping_entry *const *fenna_card_np_port_map_40ge;
extern const port_mapping_entry *const *fenna_card_phys_map_10ge;
extern const port_mapping_entry *const *fenna_card_fplate_map_10ge;
extern const port_mapping_entry *const *fenna_card_np_port_map_10ge;
extern card_version fenna_card_version;
extern subslot_info fenna_card_subslot_info;

void cvn_np_fenna_init(void);
void cvn_np_fenna_api_fill(cvn_np_api *table);
/* fenna's slot 41 and slot 44, exported under their own names. */
void aux_cvn_np_info_to_mapping_info_fenna(uint32_t np_num, uint32_t np_port, uint32_t ifsub_type,
                                           uint32_t *front, uint32_t *fplate_port,
                                           uint32_t *port_type);
void aux_np_port_to_mapping_info_fenna(const port_mapping_entry *const *entries, uint32_t np_port,
                                       uint32_t count, uint32_t *front, uint32_t *fplate_port,
                                       uint32_t *port_type);

/* ---- maruta: two NPs, each with one 100GE port and ten 10GE ports -------
 * Instances 0 and 2 are NP 0's and NP 1's 100GE port, instances 1 and 3
 * their 10GE blocks; front port f (instance in bits 7..4) is entry f of
 * the combo0 table.  The port_info records are single records, not lists
 * closed by an END record: read one record. */

extern const port_mapping_entry cvn_np_port_mapping_maruta_combo0[59];       /* by front port */
extern const port_mapping_entry cvn_np_port_mapping_maruta_combo0_tuple[23]; /* 10GE, then 100GE */
extern const uint32_t cvn_phy_to_front_combo0_inst0[1];
extern const uint32_t cvn_phy_to_front_combo0_inst1[10];
extern const uint32_t cvn_phy_to_front_combo0_inst2[1];
extern const uint32_t cvn_phy_to_front_combo0_inst3[10];
extern const port_info port_info_maruta_combo0;
extern const port_info port_info_maruta_10g;
extern const port_info port_info_maruta_100g;
extern const port_info port_info_maruat_dummy;
extern card_version maruta_card_version;
extern subslot_info maruta_card_subslot_info;

void cvn_np_maruta_init(void);
void cvn_np_maruta_api_fill(cvn_np_api *table);

/* ---- quellon: 24 ports per NP on six 4-port instances, one or two NPs ----
 * A front port is the index of its entry; only the first
 * cvn_np_qln_max_ports entries are in use (no end entry). */

typedef struct quellon_port_mapping_entry {
    uint16_t phys_front_port;
    uint16_t fplate_port;
    uint16_t ifsubinst;
    uint16_t ifsubinst_port;
    uint16_t np;
    uint16_t np_port;
} quellon_port_mapping_entry;

extern const quellon_port_mapping_entry cvn_np_port_mapping_quellon[48];
extern uint16_t cvn_np_qln_max_ports;       /* 24 x NP count, set by the init */
extern port_info quellon_port_info_list[3]; /* {ports, COMBO} {4, COMBO} {0, END} */
extern card_version quellon_card_version;
extern subslot_info cvn_np_subslot_info_quellon;

void cvn_np_quellon_init(void);
void cvn_np_quellon_api_fill(cvn_np_api *table);

/* ---- tolvar: two subslots, each holding the EP the platform reports ------
 * 2-slice: one NP per subslot.  1-slice: one NP serving both bays, with one
 * EP data table per bay and index maps for the split instances' ports. */

#define CVN_NP_TOTAL_SUBSLOT_TOLVAR 2 /* subslots of a tolvar card */
#define CVN_NP_TOTAL_SUBSLOTS 2       /* bays of the 1-slice card */

extern const np_info np_info_2slice_tolvar;
extern const cvn_np_ep_data cvn_np_lib_2slice_tv_info_types[13];
extern const np_info *tolvar_card_np_info;
extern const cvn_np_ep_data *cvn_np_lib_info_types;
extern card_version tolvar_card_version;
extern subslot_info tolvar_card_subslot_info;
extern const port_info tolvar_dummy_port_info[1];

void cvn_np_2slice_tolvar_init(void);
void cvn_np_2slice_tolvar_api_fill(cvn_np_api *table);

extern const np_info np_info_1slice_tv;
extern const cvn_np_ep_data cvn_np_lib_tv_1slice_bay0_ep_info_types[12];
extern const cvn_np_ep_data cvn_np_lib_tv_1slice_bay1_ep_info_types[9];
extern const int32_t tv_1slice_phys_2_fplate_cage_10GE[32]; /* by port bits 5..0 */
extern const int32_t tv_1slice_phys_2_fplate_cage_40GE[32];
extern const np_info *tv_1slice_card_np_info;
extern const cvn_np_ep_data *cvn_1slice_np_lib_info_types;
extern card_version tv_1slice_card_version;
extern subslot_info tv_1slice_card_subslot_info;
extern const port_info tv_1slice_dummy_port_info[1];

void cvn_np_1slice_tolvar_init(void);
void cvn_np_1slice_tolvar_api_fill(cvn_np_api *table);

/* The tolvar family functions, 2-slice then 1-slice: one per slot except 17,
 * 24, 27, 37, 42 and 45, each taking the arguments of its public function. */
const card_version *cvn_np_tolvar_version_get(void);
uint32_t cvn_tolvar_max_mtu(void);
uint32_t cvn_np_tolvar_how_many(void);
uint32_t cvn_np_tolvar_chip_how_many(void);
const port_info *cvn_np_tolvar_port_info_get(void);
const subslot_info *cvn_np_tolvar_subslot_info_get(void);
const port_info *cvn_np_tolvar_port_info_subslot(uint16_t);
const port_info *cvn_np_tolvar_port_info_from_subslot_ifsubinst(uint16_t, uint16_t);
uint32_t cvn_np_tolvar_front_port_to_np(uint32_t);
uint32_t cvn_np_tolvar_front_port_to_np_port(uint32_t);
uint32_t cvn_np_tolvar_front_port_to_port_type(uint32_t);
uint32_t cvn_np_tolvar_front_port_to_face_plate_port(uint32_t, uint32_t *, uint32_t *);
uint32_t cvn_np_tolvar_front_port_mapping_info(uint32_t, uint32_t *, uint32_t *, uint32_t *,
                                               uint32_t *);
uint32_t cvn_np_tolvar_info_num_local_ports(uint32_t);
uint32_t cvn_np_tolvar_info_to_front_port(uint32_t, uint32_t, uint32_t *);
uint32_t cvn_np_tolvar_info_to_fplate_porttype(uint32_t, uint32_t, uint32_t *, uint32_t *);
uint32_t cvn_np_tolvar_first_front_port_on_np(uint32_t, uint32_t *);
uint32_t cvn_np_tolvar_first_fplate_porttype_on_np(uint32_t, uint32_t *, uint32_t *);
uint32_t cvn_tolvar_faceplate_porttype_to_np(uint32_t, uint32_t);
uint32_t cvn_tolvar_faceplate_porttype_to_np_port(uint32_t, uint32_t);
uint32_t cvn_tolvar_faceplate_porttype_to_phys_port(uint32_t, uint32_t);
uint32_t cvn_tolvar_faceplate_porttype_mapping_info(uint32_t, uint32_t, uint32_t *, uint32_t *,
                                                    uint32_t *);
uint32_t cvn_np_tolvar_complex_to_subslot(uint8_t);
uint32_t cvn_np_tolvar_complex_to_np(uint8_t, uint32_t);
uint32_t cvn_np_tolvar_set_if_subsys_type(uint32_t, uint16_t);
uint32_t cvn_np_tolvar_to_cpu_port_map(uint16_t);
uint32_t cvn_np_tolvar_lib_set_subslot_phy_port(uint16_t, uint32_t);
uint32_t cvn_np_tolvar_lib_set_subslot_ifsubinst_ifsubinst_port(uint16_t, uint32_t, uint32_t);
uint32_t cvn_np_tolvar_lib_get_subslot(uint32_t);
uint32_t cvn_np_tolvar_lib_get_subslot_port(uint32_t);
uint32_t cvn_np_tolvar_lib_get_port(uint32_t);
uint32_t cvn_np_tolvar_lib_get_ifsubinst(uint32_t);
uint32_t cvn_np_tolvar_lib_get_ifsubinst_port(uint32_t);
uint32_t cvn_np_tolvar_lib_get_phys_port_tuple45(uint32_t, uint16_t, uint16_t, uint16_t);
const port_info *aux_cvn_np_tolvar_port_info_get(uint32_t, uint32_t, uint32_t);
void aux_cvn_np_tolvar_front_port_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *, uint32_t *);
uint32_t aux_cvn_np_tolvar_info_num_local_ports(uint32_t, uint32_t, uint32_t);
void aux_cvn_np_tolvar_info_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                            uint32_t *);
uint32_t aux_cvn_tolvar_faceplate_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                  uint32_t *, uint32_t *);
void aux_tolvar_np_port_to_mapping_info(const port_mapping_entry *const *, uint32_t, uint32_t,
                                        uint32_t *, uint32_t *, uint32_t *);

const card_version *cvn_np_tv_1slice_version_get(void);
uint32_t cvn_tv_1slice_max_mtu(void);
uint32_t cvn_np_tv_1slice_how_many(void);
uint32_t cvn_np_tv_1slice_chip_how_many(void);
const port_info *cvn_np_tv_1slice_port_info_get(void);
const subslot_info *cvn_np_tv_1slice_subslot_info_get(void);
const port_info *cvn_np_tv_1slice_port_info_subslot(uint16_t);
const port_info *cvn_np_tv_1slice_port_info_from_subslot_ifsubinst(uint16_t, uint16_t);
uint32_t cvn_np_tv_1slice_front_port_to_np(uint32_t);
uint32_t cvn_np_tv_1slice_front_port_to_np_port(uint32_t);
uint32_t cvn_np_tv_1slice_front_port_to_port_type(uint32_t);
uint32_t cvn_np_tv_1slice_front_port_to_face_plate_port(uint32_t, uint32_t *, uint32_t *);
uint32_t cvn_np_tv_1slice_front_port_mapping_info(uint32_t, uint32_t *, uint32_t *, uint32_t *,
                                                  uint32_t *);
uint32_t cvn_np_tv_1slice_info_num_local_ports(uint32_t);
uint32_t cvn_np_tv_1slice_info_to_front_port(uint32_t, uint32_t, uint32_t *);
uint32_t cvn_np_tv_1slice_info_to_fplate_porttype(uint32_t, uint32_t, uint32_t *, uint32_t *);
uint32_t cvn_np_tv_1slice_first_front_port_on_np(uint32_t, uint32_t *);
uint32_t cvn_np_tv_1slice_first_fplate_porttype_on_np(uint32_t, uint32_t *, uint32_t *);
uint32_t cvn_tv_1slice_faceplate_porttype_to_np(uint32_t, uint32_t);
uint32_t cvn_tv_1slice_faceplate_porttype_to_np_port(uint32_t, uint32_t);
uint32_t cvn_tv_1slice_faceplate_porttype_to_phys_port(uint32_t, uint32_t);
uint32_t cvn_tv_1slice_faceplate_porttype_mapping_info(uint32_t, uint32_t, uint32_t *, uint32_t *,
                                                       uint32_t *);
uint32_t cvn_np_tv_1slice_complex_to_subslot(uint8_t);
uint32_t cvn_np_tv_1slice_complex_to_np(uint8_t, uint32_t);
uint32_t cvn_np_tv_1slice_set_if_subsys_type(uint32_t, uint16_t);
uint32_t cvn_np_tv_1slice_to_cpu_port_map(uint16_t);
uint32_t cvn_np_tv_1slice_lib_set_subslot_phy_port(uint16_t, uint32_t);
uint32_t cvn_np_tv_1slice_lib_set_subslot_ifsubinst_ifsubinst_port(uint16_t, uint32_t, uint32_t);
uint32_t cvn_np_tv_1slice_lib_get_subslot(uint32_t);
uint32_t cvn_np_tv_1slice_lib_get_subslot_port(uint32_t);
uint32_t cvn_np_tv_1slice_lib_get_port(uint32_t);
uint32_t cvn_np_tv_1slice_lib_get_ifsubinst(uint32_t);
uint32_t cvn_np_tv_1slice_lib_get_ifsubinst_port(uint32_t);
uint32_t cvn_np_tv_1slice_lib_get_phys_port_tuple45(uint32_t, uint16_t, uint16_t, uint16_t);
const port_info *aux_cvn_np_tv_1slice_port_info_get(uint32_t, uint32_t, uint32_t);
void aux_cvn_np_tv_1slice_front_port_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                     uint32_t *, uint32_t *, uint32_t *);
uint32_t aux_cvn_np_tv_1slice_info_num_local_ports(uint32_t, uint32_t, uint32_t);
void aux_cvn_np_tv_1slice_info_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *, uint32_t *,
                                               uint32_t *);
uint32_t aux_cvn_tv_1slice_faceplate_to_mapping_info(uint32_t, uint32_t, uint32_t, uint32_t *,
                                                     uint32_t *, uint32_t *);
void aux_tv_1slice_np_port_to_mapping_info(const port_mapping_entry *const *, uint32_t, uint32_t,
                                           uint32_t *, uint32_t *, uint32_t *);

#ifdef __cplusplus
}
#endif

#endif /* CVN_NP_LIB_TABLES_H */

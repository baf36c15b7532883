// Native lists of Corvane-pmengine-oper: the previous flex bin and the 30-second history of each kind of port. Asked on
// the way down, walked on the way up, spelled once.
#pragma once

#define PM_OTU_PORT "/performance-management/otu/otu-ports/otu-port"
#define PM_OTU_FEC_FLEX                                                                                                \
    PM_OTU_PORT "/otu-prev/otu-prev-flex-interval/otu-prev-flex-interval-fecs/otu-prev-flex-interval-fec"
#define PM_OTU_OTN_FLEX                                                                                                \
    PM_OTU_PORT "/otu-prev/otu-prev-flex-interval/otu-prev-flex-interval-otns/otu-prev-flex-interval-otn"

#define PM_OPTICS_PORT "/performance-management/optics/optics-ports/optics-port"
#define PM_OPTICS_FLEX                                                                                                 \
    PM_OPTICS_PORT                                                                                                     \
    "/optics-prev/optics-prev-flex-interval/optics-prev-flex-interval-optics/optics-prev-flex-interval-optic"

#define PM_ETHERNET_PORT "/performance-management/ethernet/ethernet-ports/ethernet-port"
#define PM_ETHERNET_PCS_FLEX                                                                                           \
    PM_ETHERNET_PORT                                                                                                   \
    "/ethernet-prev/ethernet-prev-flex-interval/ethernet-prev-flex-interval-pcses/ethernet-prev-flex-interval-pcs"

#define PM_ODU_PORT "/performance-management/odu/odu-ports/odu-port"
#define PM_ODU_OTN_FLEX                                                                                                \
    PM_ODU_PORT "/odu-prev/odu-prev-flex-interval/odu-prev-flex-interval-otns/odu-prev-flex-interval-otn"

#define PM_PERIODIC "/performance-management-history/global/periodic"

#define PM_ETHERNET_PORT_HISTORY PM_PERIODIC "/ethernet-history/ethernet-port-histories/ethernet-port-history"
#define PM_ETHERNET_PCS_HISTORY                                                                                        \
    PM_ETHERNET_PORT_HISTORY "/ethernet-second30-history/second30pcs-histories/second30pcs-history"
#define PM_ETHERNET_PCS_TIMELINE                                                                                       \
    PM_ETHERNET_PCS_HISTORY "/second30pcs-time-line-instances/second30pcs-time-line-instance"

#define PM_OTU_PORT_HISTORY PM_PERIODIC "/otu-history/otu-port-histories/otu-port-history"
#define PM_OTU_FEC_HISTORY PM_OTU_PORT_HISTORY "/otu-second30-history/otu-second30fec-histories/otu-second30fec-history"
#define PM_OTU_FEC_TIMELINE PM_OTU_FEC_HISTORY "/otu-second30fec-time-line-instances/otu-second30fec-time-line-instance"
#define PM_OTU_OTN_HISTORY PM_OTU_PORT_HISTORY "/otu-second30-history/otu-second30otn-histories/otu-second30otn-history"
#define PM_OTU_OTN_TIMELINE PM_OTU_OTN_HISTORY "/otu-second30otn-time-line-instances/otu-second30otn-time-line-instance"

#define PM_OPTICS_PORT_HISTORY PM_PERIODIC "/optics-history/optics-port-histories/optics-port-history"
#define PM_OPTICS_HISTORY                                                                                              \
    PM_OPTICS_PORT_HISTORY                                                                                             \
    "/optics-second30-history/optics-second30-optics-histories/optics-second30-optics-history"
#define PM_OPTICS_TIMELINE                                                                                             \
    PM_OPTICS_HISTORY                                                                                                  \
    "/optics-second30-optics-time-line-instances/optics-second30-optics-time-line-instance"

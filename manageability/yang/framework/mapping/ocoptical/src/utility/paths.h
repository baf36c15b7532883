// Paths that several rows begin with.
#pragma once

#define NATIVE_CHANNEL "/logical-channels/channel"
#define NATIVE_ASSIGNMENT NATIVE_CHANNEL "/logical-channel-assignments/logical-channel-assignment"
#define NATIVE_OPTICAL_CHANNEL "/optical-channels/optical-channel"
#define NATIVE_TRANSCEIVER "/transceivers/transceiver"
#define NATIVE_OTU_CONTROLLER "/otu/controllers/controller"
#define NATIVE_ODU_CONTROLLER "/odu/controllers/controller"
#define NATIVE_ETHERNET_INTERFACE "/ethernet-interface/interfaces/interface"
#define NATIVE_ETHERNET_STATISTIC "/ethernet-interface/statistics/statistic"
#define NATIVE_OPERATIONAL_MODE "/optical-interface/operational-modes/operational-mode"

#define NATIVE_INTERFACE_CONFIGURATION "/interface-configurations/interface-configuration"
#define NATIVE_OPTICS NATIVE_INTERFACE_CONFIGURATION "/optics"
#define NATIVE_RX_THRESHOLD NATIVE_OPTICS "/rx-thresholds/rx-threshold"
#define NATIVE_OPTICS_PORT "/optics-oper/optics-ports/optics-port"

#define OC_CHANNEL "/terminal-device/logical-channels/channel"
#define OC_ASSIGNMENT OC_CHANNEL "/logical-channel-assignments/assignment"
#define OC_NEIGHBOR OC_CHANNEL "/ethernet/lldp/neighbors/neighbor"
#define OC_COMPONENT "/components/component"
#define OC_OPTICAL_CHANNEL OC_COMPONENT "/optical-channel"
#define OC_OPERATIONAL_MODE "/terminal-device/operational-modes/mode"

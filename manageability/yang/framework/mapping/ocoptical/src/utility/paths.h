// Paths that several rows begin with.
#pragma once

#define NATIVE_CHANNEL "/logical-channels/channel"
#define NATIVE_ASSIGNMENT NATIVE_CHANNEL "/logical-channel-assignments/logical-channel-assignment"
#define NATIVE_OPTICAL_CHANNEL "/optical-channels/optical-channel"
#define NATIVE_TRANSCEIVER "/transceivers/transceiver"
#define NATIVE_OTU_CONTROLLER "/otu/controllers/controller"
#define NATIVE_ETHERNET_INTERFACE "/ethernet-interface/interfaces/interface"

#define OC_CHANNEL "/terminal-device/logical-channels/channel"
#define OC_ASSIGNMENT OC_CHANNEL "/logical-channel-assignments/assignment"
#define OC_NEIGHBOR OC_CHANNEL "/ethernet/lldp/neighbors/neighbor"
#define OC_COMPONENT "/components/component"
#define OC_OPTICAL_CHANNEL OC_COMPONENT "/optical-channel"

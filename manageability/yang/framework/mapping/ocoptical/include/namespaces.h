/* Namespace URIs of the models that cross the border. */
#ifndef OCOPTICAL_NAMESPACES_H
#define OCOPTICAL_NAMESPACES_H

#define ZMF_NS_OC_TERMINAL_DEVICE "http://openconfig.net/yang/terminal-device"
#define ZMF_NS_OC_PLATFORM "http://openconfig.net/yang/platform"
#define ZMF_NS_OC_PLATFORM_TRANSCEIVER "http://openconfig.net/yang/platform/transceiver"
#define ZMF_NS_OC_IF_ETHERNET "http://openconfig.net/yang/interfaces/ethernet"
#define ZMF_NS_OC_TRANSPORT_TYPES "http://openconfig.net/yang/transport-types"
#define ZMF_NS_CORVANE(module) "urn:corvane:yang:" module /* ZMF_NS_CORVANE("Corvane-terminal-device-cfg") */

#define ZMF_NS_OPTICAL_CHANNEL_EXT ZMF_NS_CORVANE("Corvane-openconfig-terminal-device-ext")
#define ZMF_NS_TERMINAL_DEVICE_CFG ZMF_NS_CORVANE("Corvane-terminal-device-cfg")
#define ZMF_NS_OPTICS_CFG ZMF_NS_CORVANE("Corvane-controller-optics-cfg")
#define ZMF_NS_OPTICS_OPER ZMF_NS_CORVANE("Corvane-controller-optics-oper")
#define ZMF_NS_OTU_OPER ZMF_NS_CORVANE("Corvane-controller-otu-oper")
#define ZMF_NS_ODU_OPER ZMF_NS_CORVANE("Corvane-controller-odu-oper")
#define ZMF_NS_MEDIA_ETH_OPER ZMF_NS_CORVANE("Corvane-drivers-media-eth-oper")
#define ZMF_NS_TERMINAL_DEVICE_OPER ZMF_NS_CORVANE("Corvane-terminal-device-oper")
#define ZMF_NS_IFMGR_CFG ZMF_NS_CORVANE("Corvane-ifmgr-cfg")
#define ZMF_NS_LLDP_OPER ZMF_NS_CORVANE("Corvane-ethernet-lldp-oper")
#define ZMF_NS_PMENGINE_OPER ZMF_NS_CORVANE("Corvane-pmengine-oper")

#endif

/* Identifiers of the formats of raw packages and packages. */
#ifndef ZEL_FORMAT_TYPE_H
#define ZEL_FORMAT_TYPE_H

/* Raw packages: a CRC32C of 4 bytes, then an Ethernet frame. Packages: a tag of 4 bytes, then a
 * record of zel/rt_range_records.h. */
#define ZEL_FORMAT_TYPE_RTRANGE "zel.rtrange"

/* Raw packages: a vehicle bus header of 16 bytes, then an Ethernet frame. */
#define ZEL_FORMAT_TYPE_ETH_RTRANGE "zel.eth.rtrange"

/* Packages: an Ethernet frame. */
#define ZEL_FORMAT_TYPE_ETH "zel.eth"

#endif

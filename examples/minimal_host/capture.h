/* Ethernet frames of a capture as raw packages of format type "zel.rtrange". */
#ifndef MINIMAL_HOST_CAPTURE_H
#define MINIMAL_HOST_CAPTURE_H

#include <stdio.h>

#include "zel/raw_package.h"

/* One raw package: its header, then its data. */
typedef struct raw_frame_t {
    zel_raw_package_t header;
    uint8_t crc[4];
    uint8_t frame[65536];
} raw_frame_t;

/* Opens a pcap file with nanosecond timestamps in this machine's byte order. The caller closes it.
 * Returns null, after a message on standard error, for any other file. */
FILE* open_capture(const char* file);

/* Whether there are no more frames. */
bool at_end(FILE* capture);

/* Reads the next frame. Returns false when it is truncated or too large. Does not change the other
 * fields of the header. */
bool read_frame(FILE* capture, raw_frame_t* raw);

#endif

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

/* Opens a pcap file with times in nanoseconds and of this machine's byte order; the caller closes
 * it. Null, with a message on standard error, for any other file. */
FILE* open_capture(const char* file);

/* Whether there are no more frames. */
bool at_end(FILE* capture);

/* Reads the next frame; false when it is cut off or too large. Leaves the rest of the header as it
 * is. */
bool read_frame(FILE* capture, raw_frame_t* raw);

#endif

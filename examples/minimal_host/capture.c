#include "capture.h"

FILE* open_capture(const char* file) {
    FILE* const capture = fopen(file, "rb");
    uint32_t head[6] = {0}; /* the first word identifies the file format */
    if (capture != NULL && fread(head, sizeof(head), 1, capture) == 1 && head[0] == 0xA1B23C4D)
        return capture;
    fprintf(stderr, "%s: not a capture that this host can read\n", file);
    if (capture != NULL)
        fclose(capture);
    return NULL;
}

bool at_end(FILE* capture) {
    const int next = fgetc(capture);
    return next == EOF || ungetc(next, capture) == EOF;
}

bool read_frame(FILE* capture, raw_frame_t* raw) {
    uint32_t head[4]; /* seconds, nanoseconds, bytes in the file, bytes on the wire */
    if (fread(head, sizeof(head), 1, capture) != 1 || head[2] > sizeof(raw->frame))
        return false;
    const size_t size = head[2];
    raw->crc[0] = 1; /* any value except 0, which marks a corrupt frame */
    raw->header.reference_timestamp = head[0] * UINT64_C(1000000000) + head[1];
    raw->header.size = sizeof(raw->crc) + size;
    return fread(raw->frame, 1, size, capture) == size;
}

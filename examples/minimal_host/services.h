/* What this host offers to an instance: a log, which goes to standard error, and memory. */
#ifndef MINIMAL_HOST_SERVICES_H
#define MINIMAL_HOST_SERVICES_H

#include "zel/allocator.h"
#include "zel/service_locator.h"

/* Lives as long as the program. */
const zel_service_locator_t* host_services(void);

/* Its arrays are given back with free. */
extern const zel_allocator_t host_allocator;

#endif

/* The services of this host: a log, written to standard error, and an allocator. */
#ifndef MINIMAL_HOST_SERVICES_H
#define MINIMAL_HOST_SERVICES_H

#include "zel/allocator.h"
#include "zel/service_locator.h"

/* The host's service locator. Exists until the program ends. */
const zel_service_locator_t* host_services(void);

/* Its arrays are released with free. */
extern const zel_allocator_t host_allocator;

#endif

/* A C99 host: each subsystem adds here the checks that a C caller can reach
 * its exported functions and data by name. */
#ifndef C_HOST_H
#define C_HOST_H
int c_host_checks(void);
#endif

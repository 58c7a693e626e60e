#ifndef CAMPOTIPO_VERSION_H
#define CAMPOTIPO_VERSION_H

/*
 * Version of the installed headers. A release raises MINOR or PATCH; ABI is the number in the
 * SONAME of both libraries and is raised only when an existing name, record or argument changes.
 */

#define CAMPOTIPO_VERSION_MAJOR 1
#define CAMPOTIPO_VERSION_MINOR 0
#define CAMPOTIPO_VERSION_PATCH 0
#define CAMPOTIPO_VERSION "1.0.0"

#define CAMPOTIPO_ABI 1

#endif

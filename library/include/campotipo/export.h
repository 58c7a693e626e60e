#ifndef CAMPOTIPO_EXPORT_H
#define CAMPOTIPO_EXPORT_H

/* CAMPOTIPO_API and CAMPOTIPO_NOEXCEPT, which both libraries mark their names with. */
#include <campotipo-support/export.h>

#endif

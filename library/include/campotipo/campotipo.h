#ifndef CAMPOTIPO_CAMPOTIPO_H
#define CAMPOTIPO_CAMPOTIPO_H

/* Every field kind of the library. Each header opens with the manual of its kinds. */

#include <campotipo/bits.h>
#include <campotipo/calendar.h>
#include <campotipo/codes.h>
#include <campotipo/documents.h>
#include <campotipo/idnumbers.h>
#include <campotipo/percent.h>
#include <campotipo/quantities.h>
#include <campotipo/version.h>

#endif

#ifndef CAMPOTIPO_RECORDS_EXPORT_H
#define CAMPOTIPO_RECORDS_EXPORT_H

/* Marks what the library exports. A program that links the library statically needs nothing. */
#if defined(CAMPOTIPO_RECORDS_BUILDING) && defined(__GNUC__)
#define CAMPOTIPO_RECORDS_API __attribute__((visibility("default")))
#else
#define CAMPOTIPO_RECORDS_API
#endif

#endif

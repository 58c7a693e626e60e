#ifndef CAMPOTIPO_SUPPORT_EXPORT_H
#define CAMPOTIPO_SUPPORT_EXPORT_H

/*
 * The one place that knows about visibility and about C++ callers.
 *
 * CAMPOTIPO_API       marks a function or datum that a shared library of this project exports.
 * CAMPOTIPO_NOEXCEPT  ends each prototype: no operation throws, and C++ callers are told so. Who
 *                     defines a service in C++ ends the definition with it too; in C it is nothing.
 */

#define CAMPOTIPO_API __attribute__((visibility("default")))

#if defined(__cplusplus) && !defined(CAMPOTIPO_BUILDING)
#define CAMPOTIPO_NOEXCEPT noexcept
#else
#define CAMPOTIPO_NOEXCEPT
#endif

#endif

/* Marks what the shared library exports. Readable by C and C++.
 *
 * ZELVAN_BUILDING is defined while the library itself is built; a program
 * that links the objects directly (the tests) defines ZELVAN_STATIC.
 *
 * ZELVAN_API_INLINE marks a member that an exported class defines in its header:
 * the library carries it too, for hosts that bind by name. (For Microsoft's compiler
 * the class's own mark does that.) ZELVAN_FREE_INLINE does the same for a free function. */
#ifndef ZELVAN_EXPORT_H
#define ZELVAN_EXPORT_H

#if defined(_WIN32)
#if defined(ZELVAN_STATIC)
#define ZELVAN_API
#elif defined(ZELVAN_BUILDING)
#define ZELVAN_API __declspec(dllexport)
#else
#define ZELVAN_API __declspec(dllimport)
#endif
#if defined(ZELVAN_BUILDING) && !defined(ZELVAN_STATIC)
#define ZELVAN_FREE_INLINE __declspec(dllexport)
#else
#define ZELVAN_FREE_INLINE
#endif
#if defined(__GNUC__)
#define ZELVAN_API_INLINE ZELVAN_FREE_INLINE
#else
#define ZELVAN_API_INLINE
#endif
#define ZELVAN_CALL __cdecl
#else
#if defined(__GNUC__)
#define ZELVAN_API __attribute__((visibility("default")))
#else
#define ZELVAN_API
#endif
#if defined(__GNUC__) && defined(ZELVAN_BUILDING)
#define ZELVAN_API_INLINE __attribute__((visibility("default"), used))
#else
#define ZELVAN_API_INLINE
#endif
#define ZELVAN_FREE_INLINE ZELVAN_API_INLINE
#define ZELVAN_CALL
#endif

#endif

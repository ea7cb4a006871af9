#ifndef ORBEL_FOUNDATION_EXPORT_H
#define ORBEL_FOUNDATION_EXPORT_H

/// Marks a class or function as part of the library's public interface.
#if defined(_WIN32)
#if defined(OrbelLib_EXPORTS)
#define ORBEL_API __declspec(dllexport)
#else
#define ORBEL_API __declspec(dllimport)
#endif
#else
#define ORBEL_API __attribute__((visibility("default")))
#endif

#endif

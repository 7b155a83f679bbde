#ifndef MCCOMVOR_EXPORT_H
#define MCCOMVOR_EXPORT_H

#if defined(_WIN32)
#if defined(MCCOMVOR_BUILDING_LIBRARY)
#define MCCOMVOR_API __declspec(dllexport)
#else
#define MCCOMVOR_API __declspec(dllimport)
#endif
#else
#define MCCOMVOR_API __attribute__((visibility("default")))
#endif

#endif

/// The export macro of the component's interface. Everything not marked with it stays hidden.
/// MCBINNING_BUILDING_LIBRARY is defined for the component's own sources only.
#ifndef MCBINNING_EXPORT_H
#define MCBINNING_EXPORT_H

#if defined(_WIN32)
#if defined(MCBINNING_BUILDING_LIBRARY)
#define MCBINNING_API __declspec(dllexport)
#else
#define MCBINNING_API __declspec(dllimport)
#endif
#else
#define MCBINNING_API __attribute__((visibility("default")))
#endif

#endif

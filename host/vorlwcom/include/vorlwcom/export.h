#ifndef VORLWCOM_EXPORT_H
#define VORLWCOM_EXPORT_H

#if defined(_WIN32)
#define VORLWCOM_API __declspec(dllexport)
#else
#define VORLWCOM_API __attribute__((visibility("default")))
#endif

#endif

#ifndef VORLWCOM_COMMON_BLOCK_NAMES_H
#define VORLWCOM_COMMON_BLOCK_NAMES_H

/// The common-block accessors, each `void* name()`: the one table that the stand-in and the
/// component's load hook share. X is expanded once per accessor.
#define VORLWCOM_COMMON_BLOCK_ACCESSORS(X) \
  X(pvGetCmnBlock01)                       \
  X(pvGetCmnBlock02)                       \
  X(pvGetCmnBlock03)                       \
  X(pvGetCmnBlock04)                       \
  X(pvGetCmnBlock05)                       \
  X(pvGetCmnBlock06)                       \
  X(pvGetCmnBlock07)                       \
  X(pvGetCmnBlock08)                       \
  X(pvGetCmnBlock09)                       \
  X(pvGetCmnBlock10)                       \
  X(pvGetCmnBlock11)                       \
  X(pvGetCmaBlock01)                       \
  X(pvGetCmaBlock02)                       \
  X(pvGetCmaBlock03)                       \
  X(pvGetCmaBlock04)                       \
  X(pvGetCmaBlock05)                       \
  X(pvGetCmaBlock06)                       \
  X(pvGetCmaBlock07)                       \
  X(pvGetCmaBlock08)                       \
  X(pvGetCmaBlock09)                       \
  X(pvGetCmaBlock10)                       \
  X(pvGetCmaBlock11)

#endif

/// The whole interface of the component.
#ifndef MCBINNING_MCBINNING_H
#define MCBINNING_MCBINNING_H

#include <mcbinning/algorithms.h>
#include <mcbinning/case_iterator.h>
#include <mcbinning/encoders.h>
#include <mcbinning/export.h>
#include <mcbinning/factories.h>
#include <mcbinning/outputs.h>
#include <mcbinning/progress.h>
#include <mcbinning/settings.h>
#include <mcbinning/status.h>
#include <mcbinning/user_missing.h>
#include <mcbinning/variable_list.h>
#include <mcbinning/variables.h>

#endif

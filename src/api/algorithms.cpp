#include "mcbinning/algorithms.h"

IBINAlgorithm::IBINAlgorithm() = default;

IBINAlgorithm::IBINAlgorithm(const IBINAlgorithm& other) = default;

IBINAlgorithm& IBINAlgorithm::operator=(const IBINAlgorithm& other) = default;

IBINAlgorithm::~IBINAlgorithm() = default;

IEFBINAlgorithm::IEFBINAlgorithm() = default;

IEFBINAlgorithm::IEFBINAlgorithm(const IEFBINAlgorithm& other) = default;

IEFBINAlgorithm& IEFBINAlgorithm::operator=(const IEFBINAlgorithm& other) = default;

IEFBINAlgorithm::~IEFBINAlgorithm() = default;

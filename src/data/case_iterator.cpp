#include "mcbinning/case_iterator.h"

BINCaseIterator::~BINCaseIterator() = default;

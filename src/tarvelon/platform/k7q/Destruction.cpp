#include "tarvelon/platform/k7q/Destruction.h"

std::uint64_t K7Q::mi::gDestructions = 0;

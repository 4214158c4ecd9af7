#include "driver.h"

namespace store {

Driver::~Driver() = default;

} // namespace store

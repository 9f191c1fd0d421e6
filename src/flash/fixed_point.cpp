#include "flash/fixed_point.h"

#include "platform/zo_exception.h"
#include "platform/zo_string.h"

namespace ZoFlash {

void ZoThrowOutOfRange(const char* what, double value) {
    throw ZoException(ZoFormat("The SWF %s value %g is out of range.", what, value));
}

}  // namespace ZoFlash

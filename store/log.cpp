#include "log.h"

Q_LOGGING_CATEGORY(storeLog, "store", QtInfoMsg)

// placeholder: the suite is being written
#include "test_support.h"

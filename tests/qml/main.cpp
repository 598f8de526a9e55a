#include "tests/qml/surroundings.h"

QUICK_TEST_MAIN_WITH_SETUP(tidewell, Surroundings)

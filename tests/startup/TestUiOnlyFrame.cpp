#include "TestUiOnlyFrame.h"

#include "TrivialPlugin.h"

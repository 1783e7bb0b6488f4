#pragma once

// The container lives in the common layer so that style files can use it too.
#include "common/SettingsContainer.h"

#pragma once

#include "platform/unique_fd.h"

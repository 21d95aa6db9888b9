#pragma once
#include "support/RunCommand.hpp"

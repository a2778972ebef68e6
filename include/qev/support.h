/// \file
/// Pictures from files, and the sorting of imported test data.
#pragma once

#include <qev/support/image_file.h>
#include <qev/support/test_data.h>

/// \file
/// The numbers of the sample's dialog and of its field.
#pragma once

#define LENGTH_DIALOG 100
#define LENGTH_FIELD 101

// The system's facts behind the free drive letters (app/drive_letters.h), gathered on
// Windows.
#pragma once

#include "app/drive_letters.h"

// Where a window takes its drive-letter facts from: the system's by default, a fixed set in
// tests.
using DriveFactsSource = DriveLetterFacts (*)();

// The logical-drive mask, the shell's hidden-drives restriction and the local names of the
// connected network disk resources, as they are now.
DriveLetterFacts GatherDriveFacts();

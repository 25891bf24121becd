#pragma once

/// How many descriptors this process has open.
long open_descriptors();

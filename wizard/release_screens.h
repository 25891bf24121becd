#pragma once

/// Deletes every widget that exists, the root frame last, and the lists of the host's interfaces
/// and networks. Leaves every pointer null: a second call does nothing.
void release_screens();

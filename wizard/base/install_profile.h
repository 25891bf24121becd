#pragma once

#include "wizard/base/host_facts.h"

/// Fills all five rows of `install_profiles` and selects the one of the running system. Returns 0,
/// or 1 when the system's name could not be asked for; then the selection stays as it was.
int select_install_profile();

/// The selected row's `doc_dir` field itself, not a copy: start-up appends to it in place.
char* profile_doc_dir();

/// A malloc'ed copy of the selected row's `domains_dir`; the caller frees it.
char* profile_domains_dir();

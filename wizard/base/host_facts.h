#pragma once

#include "wizard/base/tel_help.h"

/// What start-up has found out about the host, for the screens and the summary to read.

/// The interface table of interfaces() and its number of entries; null and 0 before start-up. Of
/// the entries behind the last one only the empty one that ends the table is kept.
extern interf_addr* interface_table;
extern int interface_count;

/// The list of relay_networks() and its number of networks.
extern relay_network* relay_network_list;
extern int relay_network_count;

/// The document that tells how to start the server.
extern char readme_path[256];

/// The document that tells how to stop other mail programs: the documentation field of the
/// selected installation profile, which start-up extends in place.
extern char* others_doc_path;

/// Builds both lists. Where the interfaces can't be had, the table holds only the entry for all of
/// them, so that every listener screen has a row.
void discover_networks();

/// Forms `readme_path` and `others_doc_path` from the selected profile's documentation directory;
/// to be called once after select_install_profile().
void form_document_paths();

/// Releases both lists and leaves null and 0; a second call does nothing.
void release_networks();

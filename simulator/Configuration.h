/// Where the host platform finds the configuration of the unit.
#pragma once

/// A unit without configuration would have neither brightness nor zone: where there is none, it is the sample's, for
/// this process and its children, and a line on standard error says so.
void FindConfiguration();

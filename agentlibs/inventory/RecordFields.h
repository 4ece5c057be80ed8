// Which key of an inventory holds which field of a record.
#pragma once

#include "agentlibs/inventory/ObjectReader.h"
#include "agent/OrlFcoeRecords.h"

namespace orl
{

// Each reads the fields that the object names and leaves the others as they are.
void ReadFields(ObjectReader& in, ORL_FCOE_HBA& record);
void ReadFields(ObjectReader& in, ORL_FCOE_FABRIC& record);
void ReadFields(ObjectReader& in, ORL_FCOE_PORT& record);
void ReadFields(ObjectReader& in, ORL_FCOE_TARGET& record);
void ReadFields(ObjectReader& in, ORL_FCOE_LUN& record);
void ReadFields(ObjectReader& in, ORL_FCOE_VLAN& record);
void ReadFields(ObjectReader& in, ORL_FCOE_STATISTIC& record);

} // namespace orl

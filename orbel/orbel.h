#ifndef ORBEL_ORBEL_H
#define ORBEL_ORBEL_H

#include <orbel/expr/DataExpSegment.h>
#include <orbel/expr/DataExpression.h>
#include <orbel/expr/DataVariableQuery.h>
#include <orbel/foundation/AutoLock.h>
#include <orbel/foundation/DataClassType.h>
#include <orbel/foundation/DataPrintf.h>
#include <orbel/foundation/DataRootClassType.h>
#include <orbel/foundation/DataType.h>
#include <orbel/foundation/Export.h>
#include <orbel/foundation/Lock.h>
#include <orbel/foundation/StandardOutputBuffer.h>
#include <orbel/foundation/WideStandardOutputBuffer.h>
#include <orbel/handlers/IDataHandler.h>
#include <orbel/handlers/IDataHandlerImpl.h>
#include <orbel/tables/PluginPreSets.h>
#include <orbel/tree/DataArray.h>
#include <orbel/tree/DataBaseType.h>
#include <orbel/tree/DataField.h>
#include <orbel/tree/DataHandler.h>
#include <orbel/tree/DataHashTable.h>
#include <orbel/tree/DataNode.h>
#include <orbel/tree/DataObject.h>
#include <orbel/tree/DataStructure.h>
#include <orbel/tree/DataValue.h>
#include <orbel/tree/FieldRef.h>
#include <orbel/tree/FieldStream.h>
#include <orbel/tree/Orbel.h>
#include <orbel/tree/SharedPart.h>
#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>

#endif

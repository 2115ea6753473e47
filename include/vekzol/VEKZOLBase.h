// File: VEKZOLBase.h
// The umbrella header of the library: every exported class, the portable
// types, the status values and the free functions.
#ifndef VEKZOL_VEKZOLBASE_H_
#define VEKZOL_VEKZOLBASE_H_

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/CComVariant.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>
#include <vekzol/platform/Status.h>
#include <vekzol/platform/Variant.h>

#include <vekzol/objects/TestClassBase.h>
#include <vekzol/objects/VEKIZOLBaseObject.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/objects/VEKZOLBaseObjectImpl.h>
#include <vekzol/objects/VEKZOLMapOfObjList.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/graphs/VEKZOLProcessGraph.h>
#include <vekzol/graphs/VEKZOLProcessGraphEdge.h>
#include <vekzol/graphs/VEKZOLProcessGraphVertex.h>

#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <vekzol/context/VEKZOLContextInput.h>
#include <vekzol/context/VEKZOLManufContextInput.h>
#include <vekzol/context/VEKZOLVolumeFilterCondValues.h>

#include <vekzol/diagnostics/VEKZOLErrType.h>
#include <vekzol/diagnostics/VEKZOLError.h>
#include <vekzol/diagnostics/VEKZOLErrorServices.h>
#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <vekzol/services/UnicodeString.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>
#include <vekzol/services/VEKZOLFrame3D.h>
#include <vekzol/services/VEKZOLSTLServices.h>
#include <vekzol/services/VEKZOLZip.h>

#endif  // VEKZOL_VEKZOLBASE_H_

/// @file
/// All of the kit, for hosts that prefer one include: reading files, the places of what is in them, texts of
/// expressions and types, names, findings. The library that it is built on comes along.
///
///     #include <kiv/KivIfcKit.h>
///
/// Each header below can be included alone, and compiles faster so.
#pragma once

#include "kiv/Kit/Documents/Assertion.h"
#include "kiv/Kit/Documents/ReadFailure.h"
#include "kiv/Kit/Documents/ReadOptions.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetCollection.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Documents/SetMembers.h"
#include "kiv/Kit/Documents/SetPaths.h"
#include "kiv/Kit/Documents/TextFile.h"
#include "kiv/Kit/Express/DataTypeKinds.h"
#include "kiv/Kit/Express/ExpressTypeText.h"
#include "kiv/Kit/Express/ExpressionOperators.h"
#include "kiv/Kit/Express/ExpressionText.h"
#include "kiv/Kit/Express/ExpressionWalk.h"
#include "kiv/Kit/Findings/AcrossDocuments.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/IgnoreComments.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kiv/Kit/Findings/SetCheckContext.h"
#include "kiv/Kit/Names/KnownNames.h"
#include "kiv/Kit/Names/NearestName.h"
#include "kiv/Kit/Names/SchemaRelease.h"
#include "kiv/Kit/Positions/ExpressPositions.h"
#include "kiv/Kit/Positions/XmlDecoding.h"
#include "kiv/Kit/Positions/XmlPositions.h"
#include "kiv/Kit/Text/ByteOrderMark.h"
#include "kiv/Kit/Text/InvisibleCharacters.h"
#include "kiv/Kit/Text/TextLines.h"
#include "kiv/Kit/Text/TextPosition.h"
#include "kiv/KivIfcSchemaPset.h"

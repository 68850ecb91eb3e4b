#pragma once

/// The utilities that the libraries of the family share: assertions and exceptions, the pointer that is never
/// null, checked and saturating number conversions, fixed hashes, UTF-8, matrix helpers and the MRU cache.

#include <Utils/Public/Assert.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/MatrixUtils.h>
#include <Utils/Public/MemoizedHash.h>
#include <Utils/Public/NumCast.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/DeepEquality.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Truncate.h>
#include <Utils/Public/Utf8.h>
#include <Utils/Public/Vtable.h>
#include <cinder/Color.h>
#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

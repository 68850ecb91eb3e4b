#pragma once

/// The utilities that all libraries here share: assertions and exceptions, a pointer that is never null,
/// checked and saturating number conversions, hashes that never change, UTF-8, matrix helpers and the MRU
/// cache.

#include <Utils/Public/Assert.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Hash.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/MatrixUtils.h>
#include <Utils/Public/NumCast.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Utf8.h>
#include <Utils/Public/Vtable.h>
#include <cinder/Color.h>
#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

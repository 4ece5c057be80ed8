// SAFEARRAYs of one dimension.
#include <oleauto.h>

#include "winport/src/Elements.h"

#include <cstdlib>
#include <cstring>
#include <limits>

namespace
{

// What stands in front of the descriptor that callers see.
struct Block
{
    VARTYPE type;
    SAFEARRAY array;
};

Block* BlockOf(SAFEARRAY* array)
{
    return reinterpret_cast<Block*>(reinterpret_cast<char*>(array) - offsetof(Block, array));
}

USHORT FeaturesOf(VARTYPE type)
{
    const int owned = type == VT_BSTR      ? FADF_BSTR
                      : type == VT_UNKNOWN ? FADF_UNKNOWN
                      : type == VT_VARIANT ? FADF_VARIANT
                                           : 0;
    return static_cast<USHORT>(FADF_HAVEVARTYPE | owned);
}

void* ElementAt(SAFEARRAY* array, size_t position)
{
    return static_cast<char*>(array->pvData) + position * array->cbElements;
}

// The element's place, or null when the index is outside.
void* ElementOf(SAFEARRAY* array, LONG index)
{
    const LONGLONG position = LONGLONG{index} - array->rgsabound[0].lLbound;
    if (position < 0 || position >= LONGLONG{array->rgsabound[0].cElements})
        return nullptr;
    return ElementAt(array, static_cast<size_t>(position));
}

void ClearElements(SAFEARRAY* array)
{
    const VARTYPE type = BlockOf(array)->type;
    for (size_t i = 0; i < array->rgsabound[0].cElements; ++i)
        winport::ClearElement(type, ElementAt(array, i));
}

} // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds)
{
    return dimensions == 1 && bounds ? SafeArrayCreateVector(type, bounds->lLbound, bounds->cElements) : nullptr;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowest, ULONG count)
{
    const ULONG size = winport::ElementSize(type);
    if (size == 0)
        return nullptr;
    Block* block = static_cast<Block*>(std::calloc(1, sizeof(Block)));
    // Never without room: an empty array too has a place to point at.
    void* data = std::calloc(size_t{count} + 1, size);
    if (!block || !data)
    {
        std::free(block);
        std::free(data);
        return nullptr;
    }
    block->type = type;
    block->array.cDims = 1;
    block->array.fFeatures = FeaturesOf(type);
    block->array.cbElements = size;
    block->array.pvData = data;
    block->array.rgsabound[0] = {count, lowest};
    return &block->array;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array)
{
    if (!array)
        return S_OK;
    if (array->cLocks != 0)
        return DISP_E_ARRAYISLOCKED;
    ClearElements(array);
    std::free(array->pvData);
    std::free(BlockOf(array));
    return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy)
{
    if (!copy)
        return E_INVALIDARG;
    *copy = nullptr;
    if (!array)
        return S_OK;
    const VARTYPE type = BlockOf(array)->type;
    const SAFEARRAYBOUND bounds = array->rgsabound[0];
    SAFEARRAY* made = SafeArrayCreateVector(type, bounds.lLbound, bounds.cElements);
    if (!made)
        return E_OUTOFMEMORY;
    for (size_t i = 0; i < bounds.cElements; ++i)
    {
        const HRESULT hr = winport::CopyElement(type, ElementAt(made, i), ElementAt(array, i));
        if (FAILED(hr))
        {
            SafeArrayDestroy(made);
            return hr;
        }
    }
    *copy = made;
    return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* index, void* element)
{
    if (!array || !index || !element)
        return E_INVALIDARG;
    const void* place = ElementOf(array, *index);
    if (!place)
        return DISP_E_BADINDEX;
    const VARTYPE type = BlockOf(array)->type;
    std::memset(element, 0, winport::ElementSize(type));
    return winport::CopyElement(type, element, place);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* index, void* element)
{
    if (!array || !index)
        return E_INVALIDARG;
    void* place = ElementOf(array, *index);
    if (!place)
        return DISP_E_BADINDEX;
    // BSTRs and interface pointers are handed in themselves, all others by their address.
    const VARTYPE type = BlockOf(array)->type;
    const void* source = type == VT_BSTR || type == VT_UNKNOWN ? static_cast<const void*>(&element) : element;
    if (!source)
        return E_INVALIDARG;
    alignas(VARIANT) char fresh[sizeof(VARIANT)] = {};
    const HRESULT hr = winport::CopyElement(type, fresh, source);
    if (FAILED(hr))
        return hr;
    winport::ClearElement(type, place);
    std::memcpy(place, fresh, winport::ElementSize(type));
    return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* lowest)
{
    if (!array || !lowest)
        return E_INVALIDARG;
    if (dimension != 1)
        return DISP_E_BADINDEX;
    *lowest = array->rgsabound[0].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* highest)
{
    if (!array || !highest)
        return E_INVALIDARG;
    if (dimension != 1)
        return DISP_E_BADINDEX;
    const SAFEARRAYBOUND& bounds = array->rgsabound[0];
    *highest = static_cast<LONG>(LONGLONG{bounds.lLbound} + bounds.cElements - 1);
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array)
{
    return array ? array->cDims : 0;
}

UINT SafeArrayGetElemsize(SAFEARRAY* array)
{
    return array ? array->cbElements : 0;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type)
{
    if (!array || !type)
        return E_INVALIDARG;
    *type = BlockOf(array)->type;
    return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data)
{
    if (!array || !data)
        return E_INVALIDARG;
    ++array->cLocks;
    *data = array->pvData;
    return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array)
{
    if (!array)
        return E_INVALIDARG;
    if (array->cLocks == 0)
        return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

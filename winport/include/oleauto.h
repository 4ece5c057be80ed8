// BSTR, VARIANT, one-dimensional SAFEARRAYs and the thread's error object.
#pragma once

#include "objbase.h"

// A BSTR points at its characters; in front of them stand four bytes with their length in bytes. Null is an empty one.
typedef OLECHAR* BSTR;

BSTR SysAllocString(const OLECHAR* text);
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
BSTR SysAllocStringByteLen(LPCSTR bytes, UINT length);
INT SysReAllocString(BSTR* text, const OLECHAR* source);
INT SysReAllocStringLen(BSTR* text, const OLECHAR* source, UINT length);
void SysFreeString(BSTR text);
UINT SysStringLen(BSTR text);
UINT SysStringByteLen(BSTR text);

typedef USHORT VARTYPE;
typedef SHORT VARIANT_BOOL;
typedef double DATE;
#define VARIANT_TRUE (static_cast<VARIANT_BOOL>(-1))
#define VARIANT_FALSE (static_cast<VARIANT_BOOL>(0))

enum VARENUM
{
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,
    VT_I4 = 3,
    VT_R4 = 4,
    VT_R8 = 5,
    VT_DATE = 7,
    VT_BSTR = 8,
    VT_DISPATCH = 9,
    VT_ERROR = 10,
    VT_BOOL = 11,
    VT_VARIANT = 12,
    VT_UNKNOWN = 13,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
    VT_TYPEMASK = 0xFFF
};

typedef struct tagSAFEARRAYBOUND
{
    ULONG cElements;
    LONG lLbound;
} SAFEARRAYBOUND;

typedef struct tagSAFEARRAY
{
    USHORT cDims;
    USHORT fFeatures;
    ULONG cbElements;
    ULONG cLocks;
    PVOID pvData;
    SAFEARRAYBOUND rgsabound[1];
} SAFEARRAY;

#define FADF_HAVEVARTYPE 0x80
#define FADF_BSTR 0x100
#define FADF_UNKNOWN 0x200
#define FADF_VARIANT 0x800

struct IDispatch;

typedef struct tagVARIANT
{
    VARTYPE vt;
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union
    {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        FLOAT fltVal;
        DOUBLE dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        SAFEARRAY* parray;
        PVOID byref;
        CHAR cVal;
        USHORT uiVal;
        ULONG ulVal;
        ULONGLONG ullVal;
        INT intVal;
        UINT uintVal;
        // A record variant holds two pointers: the size that others rely on.
        PVOID reserved[2];
    };
} VARIANT;
typedef VARIANT VARIANTARG;
typedef VARIANT* LPVARIANT;

#define V_VT(v) ((v)->vt)
#define V_ISARRAY(v) (((v)->vt & VT_ARRAY) != 0)
#define V_ISBYREF(v) (((v)->vt & VT_BYREF) != 0)
#define V_I1(v) ((v)->cVal)
#define V_UI1(v) ((v)->bVal)
#define V_I2(v) ((v)->iVal)
#define V_UI2(v) ((v)->uiVal)
#define V_I4(v) ((v)->lVal)
#define V_UI4(v) ((v)->ulVal)
#define V_I8(v) ((v)->llVal)
#define V_UI8(v) ((v)->ullVal)
#define V_R4(v) ((v)->fltVal)
#define V_R8(v) ((v)->dblVal)
#define V_BOOL(v) ((v)->boolVal)
#define V_BSTR(v) ((v)->bstrVal)
#define V_UNKNOWN(v) ((v)->punkVal)
#define V_ARRAY(v) ((v)->parray)

#define VARIANT_ALPHABOOL 0x02
#define VARIANT_NOUSEROVERRIDE 0x04

void VariantInit(VARIANT* value);
HRESULT VariantClear(VARIANT* value);
HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);
// Between numbers, booleans and texts. DISP_E_OVERFLOW when the value does not fit, DISP_E_TYPEMISMATCH when it is no
// such value. The destination may be the source.
HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type);

// Arrays of one dimension. They own their BSTRs, VARIANTs and interface pointers: an element is copied in and out.
SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds);
SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowest, ULONG count);
HRESULT SafeArrayDestroy(SAFEARRAY* array);
HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);
HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* index, void* element);
HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* index, void* element);
HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* lowest);
HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* highest);
UINT SafeArrayGetDim(SAFEARRAY* array);
UINT SafeArrayGetElemsize(SAFEARRAY* array);
HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);

struct IErrorInfo : public IUnknown
{
    virtual HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDescription(BSTR* description) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) = 0;
};
extern const IID IID_IErrorInfo;

// One error object a thread, seen by all modules of the process. Getting it takes it: S_FALSE when there is none.
HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* error);
HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** error);

// Names of status codes.
#include "tools/orlwmi/HresultNames.h"

#include "tools/orlwmi/Wmi.h"

#include <gtest/gtest.h>

using namespace orl::client;

namespace
{

#define NAMED(code)                                                                                                    \
    {                                                                                                                  \
        static_cast<HRESULT>(code), #code                                                                              \
    }

struct Named
{
    HRESULT code;
    const char* name;
};

TEST(HresultNames, KnowsTheCodesByTheNamesOfTheirHeaders)
{
    const Named codes[] = {NAMED(WBEM_S_NO_ERROR),
                           NAMED(WBEM_S_FALSE),
                           NAMED(WBEM_S_ALREADY_EXISTS),
                           NAMED(WBEM_S_RESET_TO_DEFAULT),
                           NAMED(WBEM_S_DIFFERENT),
                           NAMED(WBEM_S_TIMEDOUT),
                           NAMED(WBEM_S_NO_MORE_DATA),
                           NAMED(WBEM_S_OPERATION_CANCELLED),
                           NAMED(WBEM_S_PENDING),
                           NAMED(WBEM_S_PARTIAL_RESULTS),
                           NAMED(E_NOTIMPL),
                           NAMED(E_NOINTERFACE),
                           NAMED(E_POINTER),
                           NAMED(E_ABORT),
                           NAMED(E_FAIL),
                           NAMED(E_UNEXPECTED),
                           NAMED(E_ACCESSDENIED),
                           NAMED(E_HANDLE),
                           NAMED(E_OUTOFMEMORY),
                           NAMED(E_INVALIDARG),
                           NAMED(CLASS_E_CLASSNOTAVAILABLE),
                           NAMED(REGDB_E_CLASSNOTREG),
                           NAMED(CO_E_NOTINITIALIZED),
                           NAMED(CO_E_ERRORINDLL),
                           NAMED(WBEM_E_FAILED),
                           NAMED(WBEM_E_NOT_FOUND),
                           NAMED(WBEM_E_ACCESS_DENIED),
                           NAMED(WBEM_E_PROVIDER_FAILURE),
                           NAMED(WBEM_E_TYPE_MISMATCH),
                           NAMED(WBEM_E_OUT_OF_MEMORY),
                           NAMED(WBEM_E_INVALID_CONTEXT),
                           NAMED(WBEM_E_INVALID_PARAMETER),
                           NAMED(WBEM_E_NOT_AVAILABLE),
                           NAMED(WBEM_E_CRITICAL_ERROR),
                           NAMED(WBEM_E_NOT_SUPPORTED),
                           NAMED(WBEM_E_INVALID_SUPERCLASS),
                           NAMED(WBEM_E_INVALID_NAMESPACE),
                           NAMED(WBEM_E_INVALID_OBJECT),
                           NAMED(WBEM_E_INVALID_CLASS),
                           NAMED(WBEM_E_PROVIDER_NOT_FOUND),
                           NAMED(WBEM_E_INVALID_PROVIDER_REGISTRATION),
                           NAMED(WBEM_E_PROVIDER_LOAD_FAILURE),
                           NAMED(WBEM_E_INITIALIZATION_FAILURE),
                           NAMED(WBEM_E_TRANSPORT_FAILURE),
                           NAMED(WBEM_E_INVALID_OPERATION),
                           NAMED(WBEM_E_INVALID_QUERY),
                           NAMED(WBEM_E_INVALID_QUERY_TYPE),
                           NAMED(WBEM_E_ALREADY_EXISTS),
                           NAMED(WBEM_E_OVERRIDE_NOT_ALLOWED),
                           NAMED(WBEM_E_UNEXPECTED),
                           NAMED(WBEM_E_ILLEGAL_OPERATION),
                           NAMED(WBEM_E_CANNOT_BE_KEY),
                           NAMED(WBEM_E_INVALID_SYNTAX),
                           NAMED(WBEM_E_READ_ONLY),
                           NAMED(WBEM_E_PROVIDER_NOT_CAPABLE),
                           NAMED(WBEM_E_QUERY_NOT_IMPLEMENTED),
                           NAMED(WBEM_E_ILLEGAL_NULL),
                           NAMED(WBEM_E_VALUE_OUT_OF_RANGE),
                           NAMED(WBEM_E_INVALID_METHOD),
                           NAMED(WBEM_E_INVALID_METHOD_PARAMETERS),
                           NAMED(WBEM_E_INVALID_PROPERTY),
                           NAMED(WBEM_E_CALL_CANCELLED),
                           NAMED(WBEM_E_SHUTTING_DOWN),
                           NAMED(WBEM_E_UNSUPPORTED_PARAMETER),
                           NAMED(WBEM_E_INVALID_OBJECT_PATH),
                           NAMED(WBEM_E_BUFFER_TOO_SMALL),
                           NAMED(WBEM_E_METHOD_NOT_IMPLEMENTED),
                           NAMED(WBEM_E_METHOD_DISABLED),
                           NAMED(WBEM_E_UNPARSABLE_QUERY),
                           NAMED(WBEM_E_NOT_EVENT_CLASS),
                           NAMED(WBEM_E_QUEUE_OVERFLOW),
                           NAMED(WBEM_E_LOCAL_CREDENTIALS),
                           NAMED(WBEM_E_CANNOT_BE_ABSTRACT),
                           NAMED(WBEM_E_TIMED_OUT),
                           NAMED(WBEM_E_INVALID_ASSOCIATION),
                           NAMED(WBEM_E_CONNECTION_FAILED),
                           NAMED(WBEM_E_PROVIDER_SUSPENDED),
                           NAMED(WBEM_E_NO_SCHEMA),
                           NAMED(WBEM_E_PROVIDER_TIMED_OUT),
                           NAMED(WBEM_E_NO_KEY),
                           NAMED(WBEM_E_PROVIDER_DISABLED)};
    for (const auto& [code, name] : codes)
    {
        const auto* known = FindHresult(code);
        ASSERT_NE(known, nullptr) << name;
        EXPECT_STREQ(known->name, name);
        EXPECT_EQ(std::string(known->text).back(), '.') << name;
    }
}

TEST(HresultNames, ShowsNameAndNumber)
{
    EXPECT_EQ(HresultLabel(WBEM_E_NOT_FOUND), "WBEM_E_NOT_FOUND (0x80041002)");
    EXPECT_EQ(HresultLabel(HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND)),
              "HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND) (0x8007007E)");
    EXPECT_EQ(HresultLabel(WBEM_S_TIMEDOUT), "WBEM_S_TIMEDOUT (0x00040004)");
}

TEST(HresultNames, ShowsTheNumberOfACodeWithoutName)
{
    EXPECT_EQ(FindHresult(static_cast<HRESULT>(0x8004EEEE)), nullptr);
    EXPECT_EQ(HresultLabel(static_cast<HRESULT>(0x8004EEEE)), "0x8004EEEE");
    EXPECT_EQ(DescribeHresult(static_cast<HRESULT>(0x8004EEEE)), "0x8004EEEE");
    EXPECT_EQ(DescribeHresult(static_cast<HRESULT>(0xFFFFFFFF)), "0xFFFFFFFF");
}

TEST(HresultNames, SaysWhatACodeMeans)
{
    EXPECT_EQ(DescribeHresult(WBEM_E_INVALID_CLASS), "WBEM_E_INVALID_CLASS (0x80041010): There is no such class.");
}

} // namespace

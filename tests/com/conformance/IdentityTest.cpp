// The rules of QueryInterface and of reference counts, for an object of every class and for its factory.

#include "tests/com/conformance/LoadedServer.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace orl::test
{
namespace
{

using Face = CComPtr<IUnknown>;

Face Ask(IUnknown* object, const IID& iid, HRESULT expected = S_OK)
{
    Face asked;
    EXPECT_EQ(object->QueryInterface(iid, reinterpret_cast<void**>(&asked.p)), expected);
    return asked;
}

class Identity : public ::testing::TestWithParam<ServedClass>
{
protected:
    // The object of the class, and its factory, each with the interfaces that it has.
    struct Subject
    {
        const char* name;
        Face object;
        std::vector<ServedInterface> interfaces;
    };

    Identity()
    {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        subjects.push_back({"object", server.Make<IUnknown>(*served.clsid), served.interfaces});
        subjects.push_back({"factory",
                            Ask(server.Factory(*served.clsid), IID_IUnknown),
                            {{"IUnknown", &IID_IUnknown}, {"IClassFactory", &IID_IClassFactory}}});
    }
    ~Identity() override
    {
        subjects.clear();
        EXPECT_EQ(server.CanUnloadNow(), S_OK) << "every reference was given back";
        CoUninitialize();
    }

    const ServedClass& served = GetParam();
    const LoadedServer server{served.library};
    std::vector<Subject> subjects;
};

TEST_P(Identity, EveryInterfaceLeadsToTheSameUnknown)
{
    for (const Subject& subject : subjects)
    {
        for (const ServedInterface& from : subject.interfaces)
        {
            SCOPED_TRACE(std::string(subject.name) + " " + from.name);
            const Face face = Ask(subject.object, *from.iid);
            EXPECT_EQ(Ask(face, IID_IUnknown).p, subject.object.p);
        }
    }
}

TEST_P(Identity, EveryInterfaceLeadsToItselfAndStaysTheSame)
{
    for (const Subject& subject : subjects)
    {
        for (const ServedInterface& from : subject.interfaces)
        {
            SCOPED_TRACE(std::string(subject.name) + " " + from.name);
            const Face face = Ask(subject.object, *from.iid);
            EXPECT_EQ(Ask(face, *from.iid).p, face.p);
            EXPECT_EQ(Ask(subject.object, *from.iid).p, face.p) << "asked again";
        }
    }
}

TEST_P(Identity, EveryInterfaceLeadsBackToWhereItWasAsked)
{
    for (const Subject& subject : subjects)
    {
        for (const ServedInterface& from : subject.interfaces)
        {
            for (const ServedInterface& to : subject.interfaces)
            {
                SCOPED_TRACE(std::string(subject.name) + " " + from.name + " " + to.name);
                const Face face = Ask(subject.object, *from.iid);
                EXPECT_EQ(Ask(Ask(face, *to.iid), *from.iid).p, face.p);
            }
        }
    }
}

TEST_P(Identity, WhatIsReachedOverAnotherInterfaceIsReachedDirectly)
{
    for (const Subject& subject : subjects)
    {
        for (const ServedInterface& first : subject.interfaces)
        {
            for (const ServedInterface& second : subject.interfaces)
            {
                for (const ServedInterface& third : subject.interfaces)
                {
                    SCOPED_TRACE(std::string(subject.name) + " " + first.name + " " + second.name + " " + third.name);
                    const Face face = Ask(subject.object, *first.iid);
                    EXPECT_EQ(Ask(Ask(face, *second.iid), *third.iid).p, Ask(face, *third.iid).p);
                }
            }
        }
    }
}

TEST_P(Identity, WhatItHasNotGotIsRefusedByEveryInterfaceAndNulled)
{
    for (const Subject& subject : subjects)
    {
        for (const ServedInterface& from : subject.interfaces)
        {
            SCOPED_TRACE(std::string(subject.name) + " " + from.name);
            const Face face = Ask(subject.object, *from.iid);
            for (const IID* iid : {served.foreign, &UnknownClass, &IID_IWbemQualifierSet})
            {
                void* asked = this;
                EXPECT_EQ(face->QueryInterface(*iid, &asked), E_NOINTERFACE);
                EXPECT_EQ(asked, nullptr);
            }
            EXPECT_EQ(face->QueryInterface(*from.iid, nullptr), E_POINTER);
        }
        EXPECT_EQ(References(subject.object), 1U);
    }
}

TEST_P(Identity, AskingTakesOneReferenceAndRefusingNone)
{
    for (const Subject& subject : subjects)
    {
        SCOPED_TRACE(subject.name);
        std::vector<Face> faces;
        for (const ServedInterface& to : subject.interfaces)
        {
            faces.push_back(Ask(subject.object, *to.iid));
            EXPECT_EQ(References(subject.object), 1 + faces.size());
        }
        Ask(subject.object, *served.foreign, E_NOINTERFACE);
        EXPECT_EQ(References(subject.object), 1 + faces.size());
        faces.clear();
        EXPECT_EQ(References(subject.object), 1U);
    }
}

TEST_P(Identity, ThreadsMayAskAndCountAtOnce)
{
    for (const Subject& subject : subjects)
    {
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread)
        {
            threads.emplace_back(
                [&subject]
                {
                    for (int i = 0; i < 500; ++i)
                    {
                        for (const ServedInterface& to : subject.interfaces)
                            Ask(Ask(subject.object, *to.iid), IID_IUnknown);
                    }
                });
        }
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(References(subject.object), 1U) << subject.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, Identity, ::testing::ValuesIn(ServedClasses()),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace orl::test

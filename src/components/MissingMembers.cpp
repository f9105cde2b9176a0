#include "components/CodeSearch.h"
#include "components/PatientFinder.h"
#include "components/ResultViewer.h"
#include "components/SupplyInfo.h"
#include "components/SupplyList.h"
#include "components/WardActivity.h"
#include "db/Recordset.h"

// Members that a component may lack: called all the same, it answers with error 438.
namespace components {

void CodeSearch::SetOtherSectionID(const QString&) {
    MissingMember("CodeFinder.clsCodeSearch", "OtherSectionID");
}

bool CodeSearch::SearchListing(QString&, int) {
    MissingMember("CodeFinder.clsCodeSearch", "SearchListing");
}

bool CodeSearch::Cancelled() const {
    MissingMember("CodeFinder.clsCodeSearch", "Cancelled");
}

const DoctorRecord& CodeSearch::Doctor() const {
    MissingMember("CodeFinder.clsCodeSearch", "DoctorRecord");
}

const OtherRevenueRecord& CodeSearch::OtherRevenue() const {
    MissingMember("CodeFinder.clsCodeSearch", "OtherRevenueRecord");
}

const DosageRecord& CodeSearch::Dosage() const {
    MissingMember("CodeFinder.clsCodeSearch", "DosageRecord");
}

void SupplyList::SetListTitle(const QString&) {
    MissingMember("DrugRoster.clsListDrugs", "ListTitle");
}

void SupplyList::SetDrugsORCSR(bool) {
    MissingMember("DrugRoster.clsListDrugs", "DrugsORCSR");
}

QString SupplyList::ShowList(const QString&, bool, const QString&) {
    MissingMember("DrugRoster.clsListDrugs", "ShowList");
}

bool SupplyInfo::SearchDrug(const QString&, const QString&) {
    MissingMember("DrugCatalog.clsDrug", "Drug.SearchDrug");
}

const DrugRecord& SupplyInfo::Drug() const {
    MissingMember("DrugCatalog.clsDrug", "Drug");
}

void SupplyInfo::AppendStockCard(const StockCardEntry&) {
    MissingMember("DrugCatalog.clsDrug", "Drug.AppendStockCard");
}

bool PatientFinder::ValidateAdmission(const QString&) {
    MissingMember("PatientFinder.clsPatientSearch", "ValidateAdmission");
}

const StayRecord& PatientFinder::Admission() const {
    MissingMember("PatientFinder.clsPatientSearch", "Admission");
}

bool PatientFinder::OpenOutPatient(const QString&, const QString&) {
    MissingMember("PatientFinder.clsPatientSearch", "OpenOutPatient");
}

const StayRecord& PatientFinder::OutPatient() const {
    MissingMember("PatientFinder.clsPatientSearch", "clsOutPatient");
}

void ResultViewer::SetSQLConnection(const std::shared_ptr<db::Connection>&) {
    MissingMember("ResultBrowser.ResultViewer", "SQLConnection");
}

void ResultViewer::SetHospitalNumber(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "HospitalNumber");
}

void ResultViewer::SetIDNumber(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "IDNumber");
}

void ResultViewer::SetRoomNumber(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "RoomNumber");
}

void ResultViewer::SetPatientName(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "PatientName");
}

void ResultViewer::SetAge(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "Age");
}

void ResultViewer::SetSex(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "Sex");
}

void ResultViewer::SetStatus(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "Status");
}

void ResultViewer::SetUserID(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "UserID");
}

void ResultViewer::SetCSnumber(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "CSnumber");
}

void ResultViewer::SetRequestNum(const QString&) {
    MissingMember("ResultBrowser.ResultViewer", "RequestNum");
}

void ResultViewer::SetAutoprint(bool) {
    MissingMember("ResultBrowser.ResultViewer", "autoprint");
}

void ResultViewer::Show_Results() {
    MissingMember("ResultBrowser.ResultViewer", "Show_Results");
}

std::shared_ptr<db::Recordset> WardRequest::GetRequests(const db::ConnectionRef&, const QString&,
                                                        const QString&) {
    MissingMember("WardActivity.clsRequest", "GetRequests");
}

void WardRequest::CloseRecordset() {
    MissingMember("WardActivity.clsRequest", "CloseRecordset");
}

std::shared_ptr<db::Recordset> WardResults::GetResults(const db::ConnectionRef&, const QString&,
                                                       const QString&) {
    MissingMember("WardActivity.clsResults", "GetResults");
}

void WardResults::CloseRecordset() {
    MissingMember("WardActivity.clsResults", "CloseRecordset");
}

std::shared_ptr<db::Recordset> Confinement::GetConfinementPeriod(const db::ConnectionRef&,
                                                                 const QString&, const QString&) {
    MissingMember("WardActivity.clsConfinement", "GetConfinementPeriod");
}

std::shared_ptr<db::Recordset> ConfinementResults::GetConfinementResults(const db::ConnectionRef&,
                                                                         const QString&,
                                                                         const QString&) {
    MissingMember("WardActivity.clsConfinementResults", "GetConfinementResults");
}

}  // namespace components

-- What the program's log-ins may do: the role capd_user of each database, made with its tables. It
-- runs procedures, and has the few table rights that the windows' plain statements and procedures
-- that read another database need. Runs after the procedures, and again after every upgrade,
-- because a procedure that is made anew has lost its rights.
USE CLINICAL_AREA
GO

GRANT EXECUTE ON Nurse_CheckRequest TO capd_user
GRANT EXECUTE ON Nurse_GetHrt TO capd_user
GRANT EXECUTE ON Nurse_GetPT TO capd_user
GRANT EXECUTE ON fn_CAPD_FundPaid TO capd_user
GRANT EXECUTE ON sp_CAPD_AssessmentStatus TO capd_user
GRANT EXECUTE ON sp_CAPD_AddToRegister TO capd_user
GRANT EXECUTE ON sp_CAPD_GetVisits TO capd_user
GRANT EXECUTE ON sp_CAPD_LogVisit TO capd_user
GRANT EXECUTE ON sp_CAPD_Patientsearch TO capd_user
GRANT EXECUTE ON sp_CAPD_RegisterPatient TO capd_user
GRANT EXECUTE ON sp_CAPD_DoctorCharge TO capd_user
GRANT EXECUTE ON sp_CAPD_FirstPrint TO capd_user
GRANT EXECUTE ON sp_CAPD_GetPackage TO capd_user
GRANT EXECUTE ON sp_CAPD_GetRequest TO capd_user
GRANT EXECUTE ON sp_CAPD_KeepPrice TO capd_user
GRANT EXECUTE ON sp_CAPD_PrintChargeSlip TO capd_user
GRANT EXECUTE ON sp_CAPD_ReportChargeSlip TO capd_user
GRANT EXECUTE ON sp_CAPD_ReportIncome TO capd_user
GRANT EXECUTE ON sp_CAPD_ReportPatients TO capd_user
GRANT EXECUTE ON sp_CAPD_ReportVisits TO capd_user
GRANT EXECUTE ON sp_CAPD_SaveAssessment TO capd_user
GRANT EXECUTE ON sp_CAPD_SaveRequest TO capd_user
GRANT EXECUTE ON sp_CAPD_SearchAdmissions TO capd_user
GRANT EXECUTE ON sp_CAPD_SearchCurrent TO capd_user
GRANT EXECUTE ON sp_CAPD_SearchPatientData TO capd_user
GRANT EXECUTE ON sp_CAPD_SheetChange TO capd_user
GRANT EXECUTE ON sp_CAPD_SearchRegister TO capd_user
GRANT EXECUTE ON sp_CAPD_SearchRevenue TO capd_user
GRANT EXECUTE ON sp_CAPD_SearchVisits TO capd_user
GRANT EXECUTE ON sp_capd_addbill TO capd_user
GRANT SELECT, UPDATE ON tbCAPDSlip TO capd_user
GRANT SELECT, DELETE ON tbCAPDChargeSlip TO capd_user
GRANT SELECT ON tbCAPDRequest TO capd_user
GRANT SELECT ON tbCAPDLogBook TO capd_user
GO

USE PATIENT_DATA
GO

GRANT EXECUTE ON fn_GetAge TO capd_user
GRANT EXECUTE ON fn_GetDoctorName TO capd_user
GRANT EXECUTE ON fn_LabMark TO capd_user
GRANT EXECUTE ON fn_GetEmployeeName TO capd_user
GRANT EXECUTE ON fn_GetOldHospNum TO capd_user
GRANT EXECUTE ON fn_GetToday TO capd_user
GRANT EXECUTE ON fn_LikePrefix TO capd_user
GRANT EXECUTE ON sp_Account_Check TO capd_user
GRANT EXECUTE ON sp_AOPD_ViewLabExams TO capd_user
GRANT EXECUTE ON sp_Confinement_Period TO capd_user
GRANT EXECUTE ON sp_Confinement_Results TO capd_user
GRANT EXECUTE ON sp_Doctor_Find TO capd_user
GRANT EXECUTE ON sp_Doctor_Search TO capd_user
GRANT EXECUTE ON sp_Finder_Admission TO capd_user
GRANT EXECUTE ON sp_Finder_OutPatient TO capd_user
GRANT EXECUTE ON sp_Lab_Result TO capd_user
GRANT EXECUTE ON sp_Listing_Inpatient TO capd_user
GRANT EXECUTE ON sp_Listing_Outpatient TO capd_user
GRANT EXECUTE ON sp_Listing_Search TO capd_user
GRANT EXECUTE ON sp_Listing_SearchInpatients TO capd_user
GRANT EXECUTE ON sp_Listing_SearchOutpatients TO capd_user
GRANT EXECUTE ON sp_User_Count TO capd_user
GRANT EXECUTE ON sp_Hospital_SetUp TO capd_user
GRANT EXECUTE ON sp_User_Create TO capd_user
GRANT EXECUTE ON sp_User_Find TO capd_user
GRANT EXECUTE ON sp_User_RecordLogin TO capd_user
GRANT SELECT ON tbDoctor TO capd_user
GRANT SELECT ON tbHospitalInfo TO capd_user
GRANT SELECT ON tbMaster TO capd_user
GRANT SELECT ON tbPatient TO capd_user
GRANT SELECT ON tbOutPatient TO capd_user
GO

USE BILLING
GO

GRANT EXECUTE ON sp_Drug_Find TO capd_user
GRANT EXECUTE ON sp_Drug_Search TO capd_user
GRANT EXECUTE ON sp_OtherRevenue_Find TO capd_user
GRANT EXECUTE ON sp_OtherRevenue_Search TO capd_user
GRANT EXECUTE ON sp_PARS_CancelCompanyPayment TO capd_user
GRANT EXECUTE ON sp_PARS_SaveCompanyPayment TO capd_user
GRANT EXECUTE ON sp_PDAF_GetAllocation TO capd_user
GRANT EXECUTE ON sp_PDAF_GetAllocation_RegAccount TO capd_user
GRANT EXECUTE ON sp_PDAF_GetBalance TO capd_user
GRANT EXECUTE ON sp_PDAF_GetRemBill TO capd_user
GRANT EXECUTE ON sp_PDAF_GetSavedPayment TO capd_user
GRANT EXECUTE ON SP_PDAF_UpdateOPDRegistration TO capd_user
GRANT EXECUTE ON sp_Pars_CheckCompany TO capd_user
GRANT EXECUTE ON sp_StockCard_Append TO capd_user
GRANT EXECUTE ON sp_Cashier_Pay TO cashier
GRANT EXECUTE ON fn_StockCard_IsReturned TO capd_user
GRANT SELECT, INSERT, UPDATE ON tbCashAssessment TO capd_user
GRANT SELECT, INSERT ON tbBill TO capd_user
GRANT SELECT, INSERT ON tbDoctorCharge TO capd_user
GRANT SELECT ON tbStockCard TO capd_user
GRANT SELECT ON tbCompanyPayment TO capd_user
GRANT SELECT ON tbCompany TO capd_user
GRANT SELECT ON tbRevenueCode TO capd_user
GRANT SELECT ON tbDrug TO capd_user
GRANT SELECT ON tbOtherRevenue TO capd_user
GRANT SELECT ON tbDiscountRate TO capd_user
GO

USE RADIOLOGY
GO

GRANT EXECUTE ON spGlobal_RegularPatients TO capd_user
GRANT EXECUTE ON spRadio_CheckPatientClass TO capd_user
GRANT EXECUTE ON spRadio_GenerateChargeSlip TO capd_user
GRANT EXECUTE ON spRadio_GetDiscount TO capd_user
GRANT EXECUTE ON spRadio_GetDiscountType TO capd_user
GRANT SELECT ON tbRadResult TO capd_user
GRANT SELECT ON tbChargeSlipFund TO capd_user
GO

USE STATION
GO

GRANT EXECUTE ON Nurse_AppendNurseLogBook TO capd_user
GRANT EXECUTE ON Nurse_CheckExamStatus TO capd_user
GRANT EXECUTE ON Nurse_CheckExam_Posted TO capd_user
GRANT EXECUTE ON Nurse_GetCT TO capd_user
GRANT EXECUTE ON Nurse_GetUltra TO capd_user
GRANT EXECUTE ON Nurse_GetXray TO capd_user
GRANT EXECUTE ON Nurse_GetPostedMedicines TO capd_user
GRANT EXECUTE ON sp_Catalogue_Check TO capd_user
GRANT EXECUTE ON sp_Dosage_Find TO capd_user
GRANT EXECUTE ON sp_Dosage_Search TO capd_user
GRANT EXECUTE ON sp_Heart_Result TO capd_user
GRANT EXECUTE ON sp_Radiology_Results TO capd_user
GRANT SELECT ON tbHeartResult TO capd_user
GRANT SELECT ON tbMedicineGiven TO capd_user
GRANT SELECT ON tbNurseLogBook TO capd_user
GRANT SELECT ON tbPTResult TO capd_user
GO

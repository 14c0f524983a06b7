-- The company, and the accounts of the voucher kinds, when the chart is written.
update Company set Company = 'NOOR INSTITUTE OF COMMERCE', comTel = '021-5550100', comFax = '021-5550101', comAddr = '17 GARDEN ROAD, KARACHI', comEmail = 'OFFICE@NOOR.EXAMPLE', comWebSite = 'WWW.NOOR.EXAMPLE', comTax = '12-00-5550-100-17', comNTN = '5550100-7' where comActive = 'Y'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.1'), Fix = 'Y' where VouStatus = 'CP'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.1') where VouStatus = 'CR'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.2') where VouStatus = 'BP'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.2') where VouStatus = 'BR'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.2') where VouStatus = 'IR'
update VouSetting set ITaxAc = (select max(RowID) from Accounts where AcNodes = '2.2.1') where VouStatus = 'TI'
update VouSetting set AcCode = (select max(RowID) from Accounts where AcNodes = '1.1.1') where VouStatus = 'RI'

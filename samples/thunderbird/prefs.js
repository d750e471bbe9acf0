user_pref("mail.accountmanager.accounts", "account1,account2");

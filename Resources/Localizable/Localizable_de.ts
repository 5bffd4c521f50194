<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <message id="account.user.error.alert.title">
        <source>Something Went Wrong</source>
        <extracomment>User account error alert title</extracomment>
        <translation>Da ist etwas schiefgelaufen</translation>
    </message>
    <message id="account.user.connection.error.alert.description">
        <source>Looks like there’s an issue with your internet connection. Please try again later.</source>
        <extracomment>User account connection error alert description</extracomment>
        <translation>Offenbar gibt es ein Problem mit deiner Internetverbindung. Bitte versuche es später noch einmal.</translation>
    </message>
    <message id="account.user.general.error.alert.description">
        <source>Looks like there’s an issue with the service. Please try again later.</source>
        <extracomment>User account general error alert description</extracomment>
        <translation>Offenbar gibt es ein Problem mit dem Dienst. Bitte versuche es später noch einmal.</translation>
    </message>
    <message id="account.user.signin.error.alert.description">
        <source>Looks like there’s an issue trying to sign you in. Please try again later.</source>
        <extracomment>Description of the sign in error alert</extracomment>
        <translation>Offenbar gab es ein Problem bei deiner Anmeldung. Bitte versuche es später noch einmal.</translation>
    </message>
    <message id="account.user.error.alert.button.title">
        <source>Okay</source>
        <extracomment>User account error alert button title</extracomment>
        <translation>OK</translation>
    </message>
    <message id="account.user.manage.logout.alert.title">
        <source>User Logout</source>
        <extracomment>User manage account logout alert title</extracomment>
        <translation>Abmeldung</translation>
    </message>
    <message id="account.user.manage.logout.alert.description">
        <source>Are you sure you want to log out? You’ll be signed out of your account.</source>
        <extracomment>User manage account logout alert description</extracomment>
        <translation>Möchtest du dich wirklich abmelden? Du wirst von deinem Konto abgemeldet.</translation>
    </message>
    <message id="account.user.manage.logout.alert.button.title">
        <source>Logout</source>
        <extracomment>User manage account logout alert button title</extracomment>
        <translation>Abmelden</translation>
    </message>
    <message id="account.user.manage.delete.alert.title">
        <source>Delete Account</source>
        <extracomment>User manage account delete alert title</extracomment>
        <translation>Konto löschen</translation>
    </message>
    <message id="account.user.manage.delete.alert.description">
        <source>Are you sure you want to delete your account? This action is permanent and cannot be undone.</source>
        <extracomment>User manage account delete alert description</extracomment>
        <translation>Möchtest du dein Konto wirklich löschen? Das ist endgültig und kann nicht rückgängig gemacht werden.</translation>
    </message>
    <message id="account.user.manage.delete.alert.button.title">
        <source>Delete</source>
        <extracomment>User manage account delete alert button title</extracomment>
        <translation>Löschen</translation>
    </message>
    <message id="account.user.alert.cancel.button.title">
        <source>Cancel</source>
        <extracomment>Title of the standard cancel button of alerts</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message id="account.user.signin.title">
        <source>Sign in to Your Account</source>
        <extracomment>Title of the sign in page for the user account</extracomment>
        <translation>Bei deinem Konto anmelden</translation>
    </message>
    <message id="account.user.signup.title">
        <source>Create Your Account</source>
        <extracomment>Title of the sign up page for the user account</extracomment>
        <translation>Konto erstellen</translation>
    </message>
    <message id="account.user.signin.description">
        <source>Sign in to access your account, manage preferences, and enjoy a personalized experience.</source>
        <extracomment>Description of the sign in page for the user account</extracomment>
        <translation>Melde dich an, um auf dein Konto zuzugreifen, deine Einstellungen zu verwalten und Inhalte zu sehen, die zu dir passen.</translation>
    </message>
    <message id="account.user.signup.description">
        <source>Create your account to unlock a seamless experience. Get personalized recommendations, exclusive offers, and faster checkouts—all in one place.</source>
        <extracomment>Description of the sign up page for the user account</extracomment>
        <translation>Erstelle dein Konto und hol mehr heraus: persönliche Empfehlungen, exklusive Angebote und schnelleres Bezahlen – alles an einem Ort.</translation>
    </message>
    <message id="account.user.signup.consent">
        <source>Send me emails with the latest offers and promotions.</source>
        <extracomment>Consent toggle information for the sign up page for the user account</extracomment>
        <translation>Schickt mir E-Mails mit den neuesten Angeboten und Aktionen.</translation>
    </message>
    <message id="account.user.signin.apple.button.signin">
        <source>Sign in with Apple</source>
        <extracomment>Caption of the button of Sign in with Apple, in the words that Apple prescribes for the language</extracomment>
        <translation>Mit Apple anmelden</translation>
    </message>
    <message id="account.user.signin.apple.button.signup">
        <source>Sign up with Apple</source>
        <extracomment>Caption of the button of Sign in with Apple for new users, in the words that Apple prescribes for the language</extracomment>
        <translation>Mit Apple registrieren</translation>
    </message>
    <message id="account.user.signin.apple.button.continue">
        <source>Continue with Apple</source>
        <extracomment>Caption of the button of Sign in with Apple, neutral, in the words that Apple prescribes for the language</extracomment>
        <translation>Mit Apple fortfahren</translation>
    </message>
    <message id="account.user.close.button.title">
        <source>Close</source>
        <extracomment>What a screen reader says for the close button of the sign in page</extracomment>
        <translation>Schließen</translation>
    </message>
    <message id="account.user.loading.title">
        <source>Loading</source>
        <extracomment>What a screen reader says while a screen waits</extracomment>
        <translation>Wird geladen</translation>
    </message>
    <message id="account.user.manage.title">
        <source>Account Details</source>
        <extracomment>User manage account screen title</extracomment>
        <translation>Kontodetails</translation>
    </message>
    <message id="account.user.manage.consent">
        <source>Consent</source>
        <extracomment>User manage account screen consent section title</extracomment>
        <translation>Einwilligung</translation>
    </message>
    <message id="account.user.manage.manage.account">
        <source>Manage Account</source>
        <extracomment>User manage account manage account section title</extracomment>
        <translation>Konto verwalten</translation>
    </message>
    <message id="account.user.manage.marketing.consent">
        <source>Use Email for Marketing Purposes</source>
        <extracomment>User manage account screen user email for marketing purposes consent text</extracomment>
        <translation>E-Mail-Adresse für Werbezwecke nutzen</translation>
    </message>
    <message id="account.user.manage.logout">
        <source>Logout</source>
        <extracomment>User manage account screen logout text</extracomment>
        <translation>Abmelden</translation>
    </message>
    <message id="account.user.manage.delete.account">
        <source>Delete Account</source>
        <extracomment>User manage account screen delete account text</extracomment>
        <translation>Konto löschen</translation>
    </message>
</context>
</TS>

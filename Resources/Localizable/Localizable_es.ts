<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name></name>
    <message id="account.user.error.alert.title">
        <source>Something Went Wrong</source>
        <extracomment>User account error alert title</extracomment>
        <translation>Algo ha salido mal</translation>
    </message>
    <message id="account.user.connection.error.alert.description">
        <source>Looks like there’s an issue with your internet connection. Please try again later.</source>
        <extracomment>User account connection error alert description</extracomment>
        <translation>Parece que hay un problema con tu conexión a internet. Inténtalo de nuevo más tarde.</translation>
    </message>
    <message id="account.user.general.error.alert.description">
        <source>Looks like there’s an issue with the service. Please try again later.</source>
        <extracomment>User account general error alert description</extracomment>
        <translation>Parece que hay un problema con el servicio. Inténtalo de nuevo más tarde.</translation>
    </message>
    <message id="account.user.signin.error.alert.description">
        <source>Looks like there’s an issue trying to sign you in. Please try again later.</source>
        <extracomment>Description of the sign in error alert</extracomment>
        <translation>Parece que ha habido un problema al iniciar tu sesión. Inténtalo de nuevo más tarde.</translation>
    </message>
    <message id="account.user.error.alert.button.title">
        <source>Okay</source>
        <extracomment>User account error alert button title</extracomment>
        <translation>Aceptar</translation>
    </message>
    <message id="account.user.manage.logout.alert.title">
        <source>User Logout</source>
        <extracomment>User manage account logout alert title</extracomment>
        <translation>Cierre de sesión</translation>
    </message>
    <message id="account.user.manage.logout.alert.description">
        <source>Are you sure you want to log out? You’ll be signed out of your account.</source>
        <extracomment>User manage account logout alert description</extracomment>
        <translation>¿Seguro que quieres cerrar sesión? Saldrás de tu cuenta.</translation>
    </message>
    <message id="account.user.manage.logout.alert.button.title">
        <source>Logout</source>
        <extracomment>User manage account logout alert button title</extracomment>
        <translation>Cerrar sesión</translation>
    </message>
    <message id="account.user.manage.delete.alert.title">
        <source>Delete Account</source>
        <extracomment>User manage account delete alert title</extracomment>
        <translation>Eliminar cuenta</translation>
    </message>
    <message id="account.user.manage.delete.alert.description">
        <source>Are you sure you want to delete your account? This action is permanent and cannot be undone.</source>
        <extracomment>User manage account delete alert description</extracomment>
        <translation>¿Seguro que quieres eliminar tu cuenta? Esta acción es permanente y no se puede deshacer.</translation>
    </message>
    <message id="account.user.manage.delete.alert.button.title">
        <source>Delete</source>
        <extracomment>User manage account delete alert button title</extracomment>
        <translation>Eliminar</translation>
    </message>
    <message id="account.user.alert.cancel.button.title">
        <source>Cancel</source>
        <extracomment>Title of the standard cancel button of alerts</extracomment>
        <translation>Cancelar</translation>
    </message>
    <message id="account.user.signin.title">
        <source>Sign in to Your Account</source>
        <extracomment>Title of the sign in page for the user account</extracomment>
        <translation>Inicia sesión en tu cuenta</translation>
    </message>
    <message id="account.user.signup.title">
        <source>Create Your Account</source>
        <extracomment>Title of the sign up page for the user account</extracomment>
        <translation>Crea tu cuenta</translation>
    </message>
    <message id="account.user.signin.description">
        <source>Sign in to access your account, manage preferences, and enjoy a personalized experience.</source>
        <extracomment>Description of the sign in page for the user account</extracomment>
        <translation>Inicia sesión para acceder a tu cuenta, gestionar tus preferencias y disfrutar de una experiencia personalizada.</translation>
    </message>
    <message id="account.user.signup.description">
        <source>Create your account to unlock a seamless experience. Get personalized recommendations, exclusive offers, and faster checkouts—all in one place.</source>
        <extracomment>Description of the sign up page for the user account</extracomment>
        <translation>Crea tu cuenta y disfruta de una experiencia sin complicaciones: recomendaciones personalizadas, ofertas exclusivas y pagos más rápidos, en un mismo lugar.</translation>
    </message>
    <message id="account.user.signup.consent">
        <source>Send me emails with the latest offers and promotions.</source>
        <extracomment>Consent toggle information for the sign up page for the user account</extracomment>
        <translation>Quiero recibir correos electrónicos con las últimas ofertas y promociones.</translation>
    </message>
    <message id="account.user.signin.apple.button.signin">
        <source>Sign in with Apple</source>
        <extracomment>Caption of the button of Sign in with Apple, in the words that Apple prescribes for the language</extracomment>
        <translation>Iniciar sesión con Apple</translation>
    </message>
    <message id="account.user.signin.apple.button.signup">
        <source>Sign up with Apple</source>
        <extracomment>Caption of the button of Sign in with Apple for new users, in the words that Apple prescribes for the language</extracomment>
        <translation>Registrarse con Apple</translation>
    </message>
    <message id="account.user.signin.apple.button.continue">
        <source>Continue with Apple</source>
        <extracomment>Caption of the button of Sign in with Apple, neutral, in the words that Apple prescribes for the language</extracomment>
        <translation>Continuar con Apple</translation>
    </message>
    <message id="account.user.close.button.title">
        <source>Close</source>
        <extracomment>What a screen reader says for the close button of the sign in page</extracomment>
        <translation>Cerrar</translation>
    </message>
    <message id="account.user.loading.title">
        <source>Loading</source>
        <extracomment>What a screen reader says while a screen waits</extracomment>
        <translation>Cargando</translation>
    </message>
    <message id="account.user.manage.title">
        <source>Account Details</source>
        <extracomment>User manage account screen title</extracomment>
        <translation>Detalles de la cuenta</translation>
    </message>
    <message id="account.user.manage.consent">
        <source>Consent</source>
        <extracomment>User manage account screen consent section title</extracomment>
        <translation>Consentimiento</translation>
    </message>
    <message id="account.user.manage.manage.account">
        <source>Manage Account</source>
        <extracomment>User manage account manage account section title</extracomment>
        <translation>Gestionar cuenta</translation>
    </message>
    <message id="account.user.manage.marketing.consent">
        <source>Use Email for Marketing Purposes</source>
        <extracomment>User manage account screen user email for marketing purposes consent text</extracomment>
        <translation>Usar el correo electrónico con fines de marketing</translation>
    </message>
    <message id="account.user.manage.logout">
        <source>Logout</source>
        <extracomment>User manage account screen logout text</extracomment>
        <translation>Cerrar sesión</translation>
    </message>
    <message id="account.user.manage.delete.account">
        <source>Delete Account</source>
        <extracomment>User manage account screen delete account text</extracomment>
        <translation>Eliminar cuenta</translation>
    </message>
</context>
</TS>
